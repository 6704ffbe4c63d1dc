// KelDataXMLFile: what the reader and the writer of settings documents share: the table of values,
// the document, and its journal, which is merged into it.
//
// The settings live in one XML document. Changes of a session are appended to a journal beside it
// and merged when the document is next read, and when the session ends. Documents are read and
// saved through the service IOroDOMXml; without it nothing is read, written or removed.
// Empty paths stand for the defaults of the process. One thread at a time; no locks.
#pragma once

#include "base/basic/keldatavisitor.h"
#include "base/basic/keldataxmltable.h"
#include "orobasictypes/oropath.h"

class IOroDOMXml;

class KelDataXMLFile : public KelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataXMLFile"; }
  using Offers = OroOffersOver<KelDataXMLFile, KelDataVisitor>;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Reads the document once. One that is not there is looked for again at the next walk, one that
  // could not be read is not. A writer's file is not read.
  bool Begin() override;

  // Fills the table from the document to read; true and nothing done for a file that is written
  // whole. False when there is none or it cannot be read.
  bool LoadTable(KelDataXMLTable& table);
  // Merges the journal, then reads the document. One that is there and cannot be read is reported.
  bool ReadDocument(const OroPath& path, KelDataXMLTable& table);
  // True when the document now holds what the journal told. The journal is gone afterwards, merged
  // or moved aside, unless documents cannot be had at all.
  bool MergeJournal(const OroPath& path);
  // Replaces the document by the table.
  bool WriteDocument(const OroPath& path, const KelDataXMLTable& table);
  // Writes the document with every value known and forgets the own table. False when it was not
  // written; the journal is gone all the same.
  bool Commit();

 protected:
  KelDataXMLFile(int32_t mode, const OroString& readPath, const OroString& writePath,
                 bool fullWrite, bool useJournal);

  // The path to write to, empty when there is none.
  const OroPath& writePath() const;
  // Where changes are appended: the journal, or the document itself.
  OroPath journalPath(const OroPath& document) const;
  // Whether the item is persistent and the filter lets it through.
  bool takesPart(IKelDataItem& item) const;
  bool writesAll() const { return fullWrite_; }

  KelDataXMLTable values_;
  bool dirty_ = false;  // a change exists that the journal does not hold

 private:
  const OroPath& readPath() const;
  bool mergeInto(const OroPath& path, const std::string& journal, IOroDOMXml& document);
  bool load(const OroPath& path, IOroDOMXml& document);
  void reportUnreadable(IOroDOMXml& document, const OroPath& path);
  void keepUnreadable(const OroPath& path);

  bool useJournal_;
  bool loaded_ = false;  // the table holds the document
  bool fullWrite_;       // all persistent items are written, and the document is not read for it
  bool failed_ = false;  // the document cannot be read
  const OroPath readPath_;
  const OroPath writePath_;
  OroPath lookedAt_;         // the document that was loaded last
  bool unreadable_ = false;  // it is there and could not be read
};
