// pointtexts: what the readers and writers of point files tell people, as English keys.
//
// Problems complete the line "FILE, line N: ..." or "FILE, byte N: ..."; notes are sentences in
// which %1 is the file. One list, so that translations and tests find them in one place.
#pragma once

#include "orobasictypes/orotranslate.h"

namespace pointtexts {

// --- Problems: the file is not read.

inline constexpr const char* kCut = oroKey("the file ends before its last point");
inline constexpr const char* kCutHeader = oroKey("the file ends inside its header");
inline constexpr const char* kNotFinite = oroKey("a coordinate is no finite number");
inline constexpr const char* kTooMany = oroKey("the file holds too many points");
inline constexpr const char* kCountTooLarge =
    oroKey("the file is too short for the %1 points it announces");
inline constexpr const char* kBadCount = oroKey("the number of points is no whole number");
inline constexpr const char* kLongLine = oroKey("the line is too long");
inline constexpr const char* kLongHeader = oroKey("the header is too long");
inline constexpr const char* kMissingNumber = oroKey("the line has too few numbers");
inline constexpr const char* kMoreNumbers = oroKey("the line has too many numbers");
inline constexpr const char* kNoNumber = oroKey("%1 is no number");
inline constexpr const char* kBadColor = oroKey("a colour value is no whole number from 0 to 255");

inline constexpr const char* kThreeCoordinates = oroKey("a point needs three coordinates");
inline constexpr const char* kBadCoordinate = oroKey("a coordinate is no number");
inline constexpr const char* kThreeColors = oroKey("a colour needs three values");
inline constexpr const char* kMoreBehindColor = oroKey("there is more behind the colour");
inline constexpr const char* kNothingBehind = oroKey("a separator has nothing behind it");
inline constexpr const char* kSomeColors = oroKey("some points have a colour and some have none");
inline constexpr const char* kNoColumns = oroKey("the first line names no columns x, y and z");
inline constexpr const char* kOtherWidth =
    oroKey("the line has another number of columns than the first");
inline constexpr const char* kMorePoints = oroKey("the file holds more points than it announces");

inline constexpr const char* kPlyBadLine = oroKey("\"%1\" is no line of a PLY header");
inline constexpr const char* kPlyBadForm = oroKey("the PLY form \"%1\" is not known");
inline constexpr const char* kPlyBadType = oroKey("the type \"%1\" of a property is not known");
inline constexpr const char* kPlyNoPoints =
    oroKey("the file has no element \"vertex\" with x, y and z");
inline constexpr const char* kPlyTwice = oroKey("\"%1\" is declared twice");
inline constexpr const char* kPlyBadList = oroKey("a list has no valid length");

inline constexpr const char* kLasNone = oroKey("the file does not begin as a LAS file");
inline constexpr const char* kLasVersion = oroKey("LAS %1 is not read, only 1.0 to 1.4");
inline constexpr const char* kLasForm = oroKey("the point format %1 is not read, only 0 to 8");
inline constexpr const char* kLasCompressed =
    oroKey("the points are compressed (LAZ), which is not read");
inline constexpr const char* kLasHeaderSize = oroKey("the size of the header is wrong");
inline constexpr const char* kLasRecordSize = oroKey("the size of a point is wrong");
inline constexpr const char* kLasOffset = oroKey("the place of the points is wrong");
inline constexpr const char* kLasGrid =
    oroKey("the scale or the offset of the coordinates is no number");

inline constexpr const char* kPcdBadLine = oroKey("\"%1\" is no line of a PCD header");
inline constexpr const char* kPcdBadField =
    oroKey("the field \"%1\" has no size or type that is known");
inline constexpr const char* kPcdNoPoints = oroKey("the file has no fields x, y and z");
inline constexpr const char* kPcdTwice = oroKey("\"%1\" stands twice in the header");
inline constexpr const char* kPcdMissing = oroKey("the header has no \"%1\"");
inline constexpr const char* kPcdCounts =
    oroKey("width and height do not make the number of points");
inline constexpr const char* kPcdCompressed =
    oroKey("the points are compressed (binary_compressed), which is not read");
inline constexpr const char* kPcdBadForm = oroKey("the PCD form \"%1\" is not known");

inline constexpr const char* kCwlNone = oroKey("the file does not begin as a model file");
inline constexpr const char* kCwlOther = oroKey("the model file holds no document of points");
inline constexpr const char* kCwlVersion =
    oroKey("the version %1 of this part of the document is not known");
inline constexpr const char* kCwlElement = oroKey("an element ends outside of what holds it");
inline constexpr const char* kCwlSize = oroKey("the size of an element is wrong");
inline constexpr const char* kCwlChunk = oroKey("the element does not hold what its kind says");
inline constexpr const char* kCwlOrder = oroKey("the colours stand behind the points");
inline constexpr const char* kCwlTwice = oroKey("the element stands twice in its object");
inline constexpr const char* kCwlNoPoints = oroKey("an object has no points");
inline constexpr const char* kCwlColors = oroKey("the number of colours is not that of the points");
inline constexpr const char* kCwlSelected = oroKey("a point is selected that does not exist");
inline constexpr const char* kCwlClouds =
    oroKey("the document holds another number of clouds than it announces");
inline constexpr const char* kCwlNumber = oroKey("a scale is no number");

// --- Problems of writing: sentences in which %1 is the file.

inline constexpr const char* kNotSavable =
    oroKey("A coordinate is no finite number, so the file %1 is not saved");
inline constexpr const char* kTooLarge =
    oroKey("A coordinate is too large for the form of the file %1");

// --- Notes: the file was read or written, and something was lost.

inline constexpr const char* kNoteNotKept = oroKey("The file %1 holds data that is not kept: %2");
inline constexpr const char* kNoteAttributesNotKept =
    oroKey("The file %1 holds attributes of %2 points that are not kept: %3");
inline constexpr const char* kNoteColorsRounded =
    oroKey("The file %1 has finer colours: %2 colour values were rounded to 256 steps");
inline constexpr const char* kNoteBehind =
    oroKey("The file %1 has %2 bytes behind its last point; they are passed over");
inline constexpr const char* kNoteRealsRounded =
    oroKey("Coordinates were rounded to fit the file %1: %2 of them, by up to %3");
inline constexpr const char* kNoteJoined =
    oroKey("The file %1 cannot keep objects apart: %2 of them were joined into one");

}  // namespace pointtexts
