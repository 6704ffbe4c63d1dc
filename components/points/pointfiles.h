// Point files and the document: what opening and saving come to.
//
// Every failure is reported, and so is what a file or its form loses. Both can be stopped
// (PointFileWork). Main thread only.
#pragma once

#include <vector>

#include "components/points/formats/pointformats.h"

class IOroDocObject;
class OroPath;
class PointDocument;

// Adds the clouds of a file as objects of the document. The extension names the format and the
// first bytes have to be of it. False when the file was not read whole; nothing is added then.
bool loadPointFile(const OroPath& path, PointDocument& document);

// Writes the clouds of the objects as a file of the type. False when the file is not whole on the
// disk; an older file is then untouched.
bool savePointFile(const OroPath& path, PointFileType type,
                   const std::vector<IOroDocObject*>& objects);
