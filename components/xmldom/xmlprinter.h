// printXml: writes an element and all in it as a document in UTF-8.
//
// A declaration, then one line for each element without children, indented by tabs. Nothing is put
// into an element that holds text. Lines end in a line feed on every system; a carriage return and
// other control characters are written as references, so that no reader changes them.
#pragma once

class OroWholeFile;
class XmlElement;

// False when the file did not take it.
bool printXml(XmlElement& root, OroWholeFile& file);
