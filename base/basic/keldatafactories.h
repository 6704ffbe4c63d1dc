// The visitors that a store makes for itself: one table of functions between the store and the file
// formats, so that neither includes the other.
//
// Each function makes a new visitor with a count of 0; a null function stands for a format that
// this build does not have, and the store then makes none. Filled when first asked for; tests put
// doubles in before they make a store.
#pragma once

class IKelDataVisitor;
class OroString;

struct KelDataFactories {
  // The settings document with its journal, at the default paths.
  IKelDataVisitor* (*defaultXmlReader)() = nullptr;
  IKelDataVisitor* (*defaultXmlWriter)() = nullptr;
  // The operating system's registry.
  IKelDataVisitor* (*registryReader)() = nullptr;
  IKelDataVisitor* (*registryWriter)() = nullptr;
  // The binary file.
  IKelDataVisitor* (*fileReader)(const OroString& path, bool notify) = nullptr;
  IKelDataVisitor* (*fileWriter)(const OroString& path) = nullptr;
  // A settings document at a path of its own.
  IKelDataVisitor* (*xmlReader)(const OroString& path, bool notify) = nullptr;
  IKelDataVisitor* (*xmlWriter)(const OroString& path) = nullptr;
  // Merges the journal of a writer of settings documents into its document; true for any other
  // visitor, which has nothing to commit.
  bool (*commit)(IKelDataVisitor* writer) = nullptr;
};

KelDataFactories& kelDataFactories();
