#include "framework/staticentrypoints.h"

#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orostring.h"

namespace {

using Table = OroHashTable<OroString, OroEntryPoint>;

// Never destroyed: components are asked for until the process ends.
Table& table() {
  static Table& table = *new Table(17);
  return table;
}

Table::Entry& entryOf(const OroString& name) {
  uint32_t index = 0;
  Table::Entry* const entry = table().find(name, &index);
  return entry != nullptr ? *entry : *table().insert(index, name, nullptr);
}

}  // namespace

void addStaticEntryPoint(const OroString& name, OroEntryPoint function) {
  entryOf(name).value = function;
}

OroEntryPoint staticEntryPoint(const OroString& name) { return entryOf(name).value; }
