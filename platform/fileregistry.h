#pragma once

// A registry that lasts in one text file per root: the system's own on Linux. Any editor shows and
// changes it; docs/formats/registry-text.md tells its form.
//
// Every operation reads the file anew, so that processes see each other's changes, and every change
// has reached the disk when its call returns. A file is replaced as a whole by renaming: nobody
// ever reads a part of one. The last replacement wins; of two processes that change the file in the
// same moment one loses its change. The machine's root is never written.
// Names are found in any case of their ASCII letters and keep the spelling of their first writing.
// Keys it gives out stay valid until they are closed; one whose key is not there any more gives
// registryNotFound. Main thread only.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/osregistry.h"
#include "platform/registrytree.h"

namespace platform {

class FileRegistry : public RegistryStore {
 public:
  /// Gives the path of a root's file, empty where there is no place for it. It is asked at each
  /// operation; neither the file nor its folder need exist.
  using FileOf = std::function<std::u16string(RegistryRoot)>;

  explicit FileRegistry(FileOf fileOf);
  ~FileRegistry() override;
  FileRegistry(const FileRegistry&) = delete;
  FileRegistry& operator=(const FileRegistry&) = delete;

  // Beside the statuses of RegistryStore: registryDamaged while the file does not follow its form,
  // registryIoFailed if it could not be read or replaced; then it is as it was before. Making a key
  // in a damaged file puts that file aside, under its name with ".damaged" added.
  RegistryKey root(RegistryRoot which) override;
  std::int32_t openKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                       RegistryKey& out) override;
  std::int32_t createKey(RegistryKey parent, std::u16string_view name, std::uint32_t access,
                         RegistryKey& out) override;
  std::int32_t queryValue(RegistryKey key, std::u16string_view name, std::uint32_t* type,
                          void* data, std::uint32_t* size) override;
  std::int32_t setValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        const void* data, std::uint32_t size) override;
  std::int32_t removeTree(RegistryKey parent, std::u16string_view name) override;
  std::int32_t closeKey(RegistryKey key) override;

 private:
  struct Hive;
  struct Handle;
  using Names = std::vector<std::u16string>;

  Handle* handleOf(RegistryKey key) const;
  std::int32_t handOut(const Handle& parent, const Names& names, std::uint32_t access,
                       RegistryKey& out);
  std::int32_t refresh(Hive& hive) const;
  std::int32_t save(Hive& hive) const;
  std::int32_t putAside(Hive& hive) const;
  static RegistryNode* find(Hive& hive, const Names& names);

  FileOf fileOf_;
  std::unique_ptr<Hive> currentUser_;
  std::unique_ptr<Hive> localMachine_;
  std::unique_ptr<Handle> userRoot_;  // never closed, as the next
  std::unique_ptr<Handle> machineRoot_;
  std::set<RegistryKey> handles_;  // all that are valid, the two roots included
};

}  // namespace platform
