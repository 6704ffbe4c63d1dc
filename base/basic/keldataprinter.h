// KelDataPrinter: prints the settings tree as indented text, for people and for logs.
//
//   KelDataPrinter printer(std::cout);
//   store->Accept(&printer);
//
// Items of all flags are printed, blobs and events are not. The stream is borrowed and gives the
// numbers their form. One thread at a time.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "base/basic/keldatavisitor.h"

class KelDataPrinter final : public KelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataPrinter"; }
  using Offers = OroOffersOver<KelDataPrinter, KelDataVisitor>;

  explicit KelDataPrinter(std::ostream& out) : KelDataVisitor(kWriting), out_(out) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool Begin() override;
  bool EnterDirectory(IKelDataDirectory* directory) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;
  bool LeaveDirectory(IKelDataDirectory* directory) override;
  bool End() override;

 private:
  std::ostream& line(const char* word);
  template <class Item>
  std::ostream& itemLine(const char* word, Item* item);

  std::ostream& out_;
  int32_t indent_ = 0;  // tabs in front of a line
};
