// KelDataRegistry: keeps settings in the operating system's registry, below the product's key of
// the current user. The default reader and writer of KelCustomDataStore.
//
// A walk of the whole store mirrors the tree: its root is the key "Options", each directory a key
// and each item a value of its name. A walk to one path (AcceptPath) leaves the root out, so that
// the first directory on the way stands for "Options" itself; kept, since values are found there.
// The registry ignores the letter case of names. One thread at a time.
#pragma once

#include <array>
#include <cstdint>

#include "base/basic/keldatavisitor.h"
#include "platform/osregistry.h"

class KelDataRegistry final : public KelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataRegistry"; }
  using Offers = OroOffersOver<KelDataRegistry, KelDataVisitor>;

  explicit KelDataRegistry(int32_t mode) : KelDataVisitor(mode) {}
  ~KelDataRegistry() override { closeKeys(); }
  KelDataRegistry(const KelDataRegistry&) = delete;
  KelDataRegistry& operator=(const KelDataRegistry&) = delete;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Closes what an earlier walk left open.
  bool Begin() override;
  // Makes the key where it is missing, also when reading. False if that fails, and below 64 levels.
  bool EnterDirectory(IKelDataDirectory* directory) override;
  bool LeaveDirectory(IKelDataDirectory* directory) override;

  // Writing writes every persistent item, changed or not. Reading is silent and leaves layer 1
  // alone. A value of another type is a failed assertion and is then taken for what it should be.
  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;

 private:
  static constexpr int32_t kDeepest = 64;

  template <class Item>
  bool visit(Item* item, bool (KelDataRegistry::*read)(Item*, const char*),
             bool (KelDataRegistry::*write)(Item*, const char*));
  bool readInt(IKelDataInt* item, const char* name);
  bool writeInt(IKelDataInt* item, const char* name);
  bool readFloat(IKelDataFloat* item, const char* name);
  bool writeFloat(IKelDataFloat* item, const char* name);
  bool readString(IKelDataString* item, const char* name);
  bool writeString(IKelDataString* item, const char* name);
  bool readOroString(IKelDataOroString* item, const char* name);
  bool writeOroString(IKelDataOroString* item, const char* name);
  bool readBlob(IKelDataBlob* item, const char* name);
  bool writeBlob(IKelDataBlob* item, const char* name);

  bool query(const char* name, uint32_t type, const char* assertion, void* data, uint32_t& size);
  bool set(const char* name, uint32_t type, const void* data, int64_t size);
  platform::RegistryKey openLevel(IKelDataDirectory* directory) const;
  void closeKeys();

  int32_t level_ = 0;                                      // keys that are open
  platform::RegistryKey current_ = nullptr;                // the last of them
  std::array<platform::RegistryKey, kDeepest> keys_ = {};  // null from the level on
};
