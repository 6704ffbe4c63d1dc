#include "platform/fileregistry.h"

#include <algorithm>
#include <cstring>

#include "platform/files.h"
#include "platform/filestream.h"
#include "platform/registrytext.h"

namespace platform {
namespace {

constexpr std::uint32_t anyChange = registryMaySet | registryMayCreate;

// The bytes of a plain file, nothing if it cannot be read. One byte above the limit is enough to
// tell that it is too large.
std::optional<std::string> readFile(const std::u16string& path) {
  std::FILE* const stream = isFile(path) ? openFile(path, "rb") : nullptr;
  if (stream == nullptr) return std::nullopt;
  std::string bytes;
  char block[16384];
  while (bytes.size() <= largestRegistryText) {
    const std::size_t got = std::fread(block, 1, sizeof block, stream);
    bytes.append(block, got);
    if (got < sizeof block) break;
  }
  const bool failed = std::ferror(stream) != 0;
  std::fclose(stream);
  return failed ? std::nullopt : std::optional(std::move(bytes));
}

void makeFolders(std::u16string_view path) {
  const std::size_t end = path.find_last_of(u"\\/");
  if (end == path.npos || end == 0 || isDirectory(path.substr(0, end))) return;
  makeFolders(path.substr(0, end));
  makeDirectory(path.substr(0, end));
}

// The path then stands for all of the bytes, or for what it stood for before.
bool replaceFile(const std::u16string& path, const std::string& bytes) {
  if (path.empty()) return false;
  makeFolders(path);
  const std::u16string temporary = temporaryNameBeside(path);
  std::FILE* const stream = openFile(temporary, "wb");
  if (stream == nullptr) return false;
  const bool written =
      writeBlock(stream, bytes.data(), bytes.size()) == bytes.size() && flushToDisk(stream);
  const bool closed = std::fclose(stream) == 0;
  if (written && closed && renameFile(temporary, path)) return true;
  removeFile(temporary);
  return false;
}

}  // namespace

// One root as it was last read or written.
struct FileRegistry::Hive {
  explicit Hive(RegistryRoot root) : which(root) {}

  const RegistryRoot which;
  std::u16string path;               // of the file when it was read
  std::optional<std::string> bytes;  // of the file; nothing if there was none
  RegistryNode tree;                 // what they say
  std::int32_t status = registryOk;  // whether they say it well
  bool isRead = false;               // false: read again whatever the bytes are
};

// Keys are known by their names: the tree is made anew when the file changes.
struct FileRegistry::Handle {
  Hive& hive;
  Names names;
  std::uint32_t access;
};

FileRegistry::FileRegistry(FileOf fileOf)
    : fileOf_(std::move(fileOf)),
      currentUser_(new Hive(RegistryRoot::currentUser)),
      localMachine_(new Hive(RegistryRoot::localMachine)),
      userRoot_(new Handle{*currentUser_, {}, registryFullAccess}),
      machineRoot_(new Handle{*localMachine_, {}, registryRead}),
      handles_{userRoot_.get(), machineRoot_.get()} {}

FileRegistry::~FileRegistry() {
  for (const RegistryKey key : handles_) {
    if (key != userRoot_.get() && key != machineRoot_.get()) delete static_cast<Handle*>(key);
  }
}

RegistryKey FileRegistry::root(RegistryRoot which) {
  return which == RegistryRoot::currentUser ? userRoot_.get() : machineRoot_.get();
}

FileRegistry::Handle* FileRegistry::handleOf(RegistryKey key) const {
  return handles_.contains(key) ? static_cast<Handle*>(key) : nullptr;
}

std::int32_t FileRegistry::handOut(const Handle& parent, const Names& names, std::uint32_t access,
                                   RegistryKey& out) {
  auto* const handle = new Handle{parent.hive, parent.names, access};
  handle->names.insert(handle->names.end(), names.begin(), names.end());
  out = handle;
  handles_.insert(out);
  return registryOk;
}

// Brings the tree to what the file says now.
std::int32_t FileRegistry::refresh(Hive& hive) const {
  const std::u16string path = fileOf_(hive.which);
  std::optional<std::string> bytes;
  if (!path.empty() && pathExists(path)) {
    bytes = readFile(path);
    if (!bytes) {
      hive.isRead = false;
      return registryIoFailed;
    }
  }
  if (hive.isRead && hive.path == path && hive.bytes == bytes) return hive.status;
  std::optional<RegistryNode> tree = bytes ? parseRegistryText(*bytes) : RegistryNode();
  hive.status = tree ? registryOk : registryDamaged;
  hive.tree = tree ? std::move(*tree) : RegistryNode();
  hive.path = path;
  hive.bytes = std::move(bytes);
  hive.isRead = true;
  return hive.status;
}

std::int32_t FileRegistry::save(Hive& hive) const {
  std::string text = writeRegistryText(hive.tree);
  hive.isRead = isReadableRegistryText(text, hive.tree) && replaceFile(hive.path, text);
  hive.bytes = std::move(text);
  return hive.isRead ? registryOk : registryIoFailed;
}

std::int32_t FileRegistry::putAside(Hive& hive) const {
  hive.isRead = false;
  if (!renameFile(hive.path, hive.path + u".damaged")) return registryIoFailed;
  return refresh(hive);
}

RegistryNode* FileRegistry::find(Hive& hive, const Names& names) {
  RegistryNode* node = &hive.tree;
  for (std::size_t i = 0; node != nullptr && i < names.size(); ++i) node = node->child(names[i]);
  return node;
}

std::int32_t FileRegistry::openKey(RegistryKey parent, std::u16string_view name,
                                   std::uint32_t access, RegistryKey& out) {
  const Handle* const handle = handleOf(parent);
  if (handle == nullptr) return registryBadKey;
  const auto names = splitRegistryPath(name);
  if (!names) return registryBadParameter;
  const std::int32_t status = refresh(handle->hive);
  if (status != registryOk) return status;
  const RegistryNode* node = find(handle->hive, handle->names);
  for (std::size_t i = 0; node != nullptr && i < names->size(); ++i) {
    node = node->child((*names)[i]);
  }
  if (node == nullptr) return registryNotFound;
  const bool readOnly = handle->hive.which == RegistryRoot::localMachine;
  if (readOnly && (access & anyChange) != 0) return registryAccessDenied;
  return handOut(*handle, *names, access, out);
}

std::int32_t FileRegistry::createKey(RegistryKey parent, std::u16string_view name,
                                     std::uint32_t access, RegistryKey& out) {
  const Handle* const handle = handleOf(parent);
  if (handle == nullptr) return registryBadKey;
  const std::int32_t opened = openKey(parent, name, access, out);
  if (opened != registryNotFound && opened != registryDamaged) return opened;
  if ((handle->access & registryMayCreate) == 0) {
    return opened == registryDamaged ? opened : registryAccessDenied;
  }
  Hive& hive = handle->hive;
  if (opened == registryDamaged) {
    const std::int32_t status = putAside(hive);
    if (status != registryOk) return status;
  }
  RegistryNode* node = find(hive, handle->names);
  if (node == nullptr) return registryNotFound;
  const Names names = *splitRegistryPath(name);
  if (handle->names.size() + names.size() > deepestRegistryLevel) return registryBadParameter;
  for (const std::u16string& step : names) node = &node->childMade(step);
  const std::int32_t status = save(hive);
  return status != registryOk ? status : handOut(*handle, names, access, out);
}

std::int32_t FileRegistry::queryValue(RegistryKey key, std::u16string_view name,
                                      std::uint32_t* type, void* data, std::uint32_t* size) {
  const Handle* const handle = handleOf(key);
  if (handle == nullptr) return registryBadKey;
  if (data != nullptr && size == nullptr) return registryBadParameter;
  if ((handle->access & registryMayQuery) == 0) return registryAccessDenied;
  const std::int32_t status = refresh(handle->hive);
  if (status != registryOk) return status;
  const RegistryNode* const node = find(handle->hive, handle->names);
  const RegistryValue* const value = node != nullptr ? node->value(name) : nullptr;
  return value != nullptr ? value->handOut(type, data, size) : registryNotFound;
}

std::int32_t FileRegistry::setValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                    const void* data, std::uint32_t size) {
  const Handle* const handle = handleOf(key);
  if (handle == nullptr) return registryBadKey;
  if (data == nullptr && size != 0) return registryBadParameter;
  if (name.size() > longestRegistryValueName) return registryBadParameter;
  if ((handle->access & registryMaySet) == 0) return registryAccessDenied;
  const std::int32_t status = refresh(handle->hive);
  if (status != registryOk) return status;
  RegistryNode* const node = find(handle->hive, handle->names);
  if (node == nullptr) return registryNotFound;
  const std::string_view bytes(static_cast<const char*>(data), size);
  const RegistryValue* const before = node->value(name);
  if (before != nullptr && before->holds(type, bytes)) return registryOk;
  node->set(name, type, bytes);
  return save(handle->hive);
}

std::int32_t FileRegistry::removeTree(RegistryKey parent, std::u16string_view name) {
  const Handle* const handle = handleOf(parent);
  if (handle == nullptr) return registryBadKey;
  auto names = splitRegistryPath(name);
  if (!names || names->empty()) return registryBadParameter;
  if (handle->hive.which == RegistryRoot::localMachine) return registryAccessDenied;
  const std::int32_t status = refresh(handle->hive);
  if (status != registryOk) return status;
  const std::u16string last = names->back();
  names->pop_back();
  names->insert(names->begin(), handle->names.begin(), handle->names.end());
  RegistryNode* const node = find(handle->hive, *names);
  if (node == nullptr || node->keys.erase(foldedRegistryName(last)) == 0) return registryNotFound;
  return save(handle->hive);
}

std::int32_t FileRegistry::closeKey(RegistryKey key) {
  if (handleOf(key) == nullptr) return registryBadKey;
  if (key == userRoot_.get() || key == machineRoot_.get()) return registryOk;
  handles_.erase(key);
  delete static_cast<Handle*>(key);
  return registryOk;
}

}  // namespace platform
