// A table of settings as an XML document, and back: sections are elements, nested by the segments
// of the paths, and values are the leaves.
//
// Both work for documents of any depth without using the stack. One thread at a time.
#pragma once

class IOroDOMXml;
class KelDataXMLTable;

// Puts the values of the document into the table, over what it holds. An element that is not called
// "value" is a section, whatever its name. False when the document has no root, or when its paths
// together are longer than any settings are; the table then holds a part.
bool kelFlattenDocument(IOroDOMXml& document, KelDataXMLTable& table);

// Makes the root "OroDataStore" with all values, in natural order of their paths. False when the
// document refuses an element.
bool kelBuildDocument(const KelDataXMLTable& table, IOroDOMXml& document);
