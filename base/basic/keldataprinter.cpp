#include "base/basic/keldataprinter.h"

#include <ostream>

#include "interfaces/IKelDataDirectory.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"
#include "orobasictypes/orostring.h"

std::ostream& KelDataPrinter::line(const char* word) {
  for (int32_t i = 0; i < indent_; ++i) out_ << '\t';
  return out_ << word << ' ';
}

template <class Item>
std::ostream& KelDataPrinter::itemLine(const char* word, Item* item) {
  return line(word) << oroQuery<IKelDataItem>(item)->GetName() << " = ";
}

bool KelDataPrinter::Begin() {
  indent_ = 0;
  return true;
}

bool KelDataPrinter::EnterDirectory(IKelDataDirectory* directory) {
  line("directory") << directory->GetName() << '\n';
  ++indent_;
  return true;
}

bool KelDataPrinter::LeaveDirectory(IKelDataDirectory*) {
  --indent_;
  return true;
}

bool KelDataPrinter::End() {
  out_ << '\n';
  return true;
}

bool KelDataPrinter::VisitInt(IKelDataInt* item) {
  itemLine("int", item) << item->Get() << '\n';
  return true;
}

bool KelDataPrinter::VisitFloat(IKelDataFloat* item) {
  itemLine("float", item) << item->Get() << '\n';
  return true;
}

bool KelDataPrinter::VisitString(IKelDataString* item) {
  itemLine("c-string", item) << '[' << item->Get() << "]\n";
  return true;
}

bool KelDataPrinter::VisitOroString(IKelDataOroString* item) {
  itemLine("kel-string", item) << '[' << item->Get().toNarrow() << "]\n";
  return true;
}
