#include "components/points/pointcommandrows.h"

#include "components/points/pointfactcommands.h"
#include "components/points/pointfilecommands.h"
#include "components/points/pointkeepcommands.h"
#include "components/points/pointmovecommands.h"
#include "orobasictypes/orotranslate.h"

namespace {

constexpr PointParameter kBounds[] = {
    {"selected", oroKey("1: of the selected points alone; 0, of all, when left out"), 1, 1},
};
constexpr PointParameter kCrop[] = {
    {"min", oroKey("least x, y and z that stay; no limit when left out"), 3, 3},
    {"max", oroKey("largest x, y and z that stay; no limit when left out"), 3, 3},
    {"inside", oroKey("0: what is in the box goes instead; 1 when left out"), 1, 1},
    {"selected", oroKey("1: the selected points are kept instead of those in a box"), 1, 1},
};
constexpr PointParameter kFile[] = {{"file", oroKey("name of the file"), 0, 0, true}};
constexpr PointParameter kRotate[] = {
    {"angle", oroKey("degrees, counterclockwise as seen against the axis"), 1, 1, true},
    {"axis", oroKey("direction of the axis; 0, 0, 1 when left out"), 3, 3},
    {"center", oroKey("a point of the axis; the origin when left out"), 3, 3},
};
constexpr PointParameter kScale[] = {
    {"factor", oroKey("one factor, or one each for x, y and z"), 1, 3, true},
    {"center", oroKey("the point that stays; the origin when left out"), 3, 3},
};
constexpr PointParameter kSelect[] = {
    {"min", oroKey("least x, y and z of the box; no limit when left out"), 3, 3},
    {"max", oroKey("largest x, y and z of the box; no limit when left out"), 3, 3},
    {"mode", oroKey("new, add, remove, keep, all, none or invert; new when left out"), 0, 0},
};
constexpr PointParameter kSnapshot[] = {
    {"file", oroKey("name of the PNG file, which ends in .png"), 0, 0, true},
    {"view", oroKey("top, front or side; top when left out"), 0, 0},
    {"color", oroKey("rgb or height; rgb, where there are colours, when left out"), 0, 0},
    {"size", oroKey("width and height of the picture in pixels; 800 and 600 when left out"), 2, 2},
};
constexpr PointParameter kSort[] = {
    {"axis", oroKey("x, y, z or several of them, the first weighing most; xyz when left out"), 0,
     0},
    {"descending", oroKey("1: the largest first; 0 when left out"), 1, 1},
};
constexpr PointParameter kThin[] = {
    {"count", oroKey("points that stay, of all clouds together"), 1, 1, true},
    {"method",
     oroKey("even, by equal steps in the order of the points, or random; even when left out"), 0,
     0},
    {"seed", oroKey("whole number that the random choice starts from; 0 when left out"), 1, 1},
};
constexpr PointParameter kTransform[] = {
    {"matrix", oroKey("sixteen numbers by rows, or twelve without the last row"), 12, 16, true},
};
constexpr PointParameter kTranslate[] = {{"by", oroKey("what x, y and z grow by"), 3, 3, true}};
constexpr PointParameter kVoxelThin[] = {
    {"size", oroKey("edge of a cube, in the unit of the points"), 1, 1, true},
};

constexpr PointCommandRow kRows[] = {
    {"bounds", oroKey("Tells the smallest box around the points"), kBounds, pointcommands::bounds},
    {"crop", oroKey("Keeps the points in a box"), kCrop, pointcommands::crop},
    {"deduplicate",
     oroKey("Removes points with the coordinates of an earlier one of their cloud"),
     {},
     pointcommands::deduplicate},
    {"info",
     oroKey("Tells how many clouds and points there are, and where"),
     {},
     pointcommands::info},
    {"merge",
     oroKey("Makes all clouds one; colours stay where all have them"),
     {},
     pointcommands::merge},
    {"open", oroKey("Opens a file and adds its clouds to the document"), kFile,
     pointcommands::open},
    {"rotate", oroKey("Turns the points about an axis"), kRotate, pointcommands::rotate},
    {"save", oroKey("Saves the document; the extension of the name chooses the format"), kFile,
     pointcommands::save},
    {"scale", oroKey("Multiplies the coordinates"), kScale, pointcommands::scale},
    {"select", oroKey("Selects the points in a box"), kSelect, pointcommands::select},
    {"snapshot", oroKey("Writes a picture of the points as seen from far away"), kSnapshot,
     pointcommands::snapshot},
    {"sort", oroKey("Orders the points by their coordinates"), kSort, pointcommands::sort},
    {"thin", oroKey("Keeps so many points"), kThin, pointcommands::thin},
    {"to_gray", oroKey("Turns the colours to gray"), {}, pointcommands::toGray},
    {"transform", oroKey("Moves the points by a matrix"), kTransform, pointcommands::transform},
    {"translate", oroKey("Shifts the points"), kTranslate, pointcommands::translate},
    {"voxel_thin", oroKey("Keeps one point for each cube of space: the one nearest to its middle"),
     kVoxelThin, pointcommands::voxelThin},
};

}  // namespace

std::span<const PointCommandRow> pointCommandRows() { return kRows; }
