// Typed binary files against bare calls of the system, and model files against a file that is put
// together in memory.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/support/ratios.h"
#include "interfaces/IOroDataModelReader.h"
#include "interfaces/IOroDataModelWriter.h"
#include "orobasictypes/binio.h"
#include "orobasictypes/orofileread.h"
#include "orobasictypes/orofilewrite.h"
#include "orobasictypes/oropath.h"
#include "platform/descriptor.h"
#include "platform/files.h"
#include "tests/tempfolder.h"

namespace {

// More than the caches hold, as large models have.
template <class T>
constexpr int64_t valueCount = (32 << 20) / sizeof(T);
constexpr int64_t elementCount = 1000000;

// What programs commonly hand to the system at once.
constexpr size_t systemBlock = 65536;

class Files {
 public:
  OroPath path(const char* name) const {
    return OroPath(OroString(folder_.file(name).u16string().c_str()));
  }

 private:
  tests::TempFolder folder_;
};

// The bytes as they are, with bare calls.
void writeBytes(const OroPath& path, const void* bytes, size_t size) {
  const unsigned mode = platform::openWrite | platform::openCreate | platform::openTruncate;
  const int file = platform::openDescriptor(path.wideText(), mode);
  const auto* const from = static_cast<const char*>(bytes);
  for (size_t at = 0; at < size; at += systemBlock) {
    platform::writeDescriptor(file, from + at, std::min(systemBlock, size - at));
  }
  platform::closeDescriptor(file);
}

void readBytes(const OroPath& path, void* bytes, size_t size) {
  const int file = platform::openDescriptor(path.wideText(), platform::openRead);
  auto* const to = static_cast<char*>(bytes);
  for (size_t at = 0; at < size; at += systemBlock) {
    platform::readDescriptor(file, to + at, std::min(systemBlock, size - at));
  }
  platform::closeDescriptor(file);
}

template <class T>
T swapped(T value) {
  uint8_t bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  std::reverse(bytes, bytes + sizeof value);
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

// The floor: a swapped copy and one call of the C library.
template <class T>
void writeSwapped(const OroPath& path, const std::vector<T>& values) {
  std::vector<T> copy(values.size());
  for (size_t i = 0; i < values.size(); ++i) copy[i] = swapped(values[i]);
  std::FILE* const file = platform::openFile(path.wideText(), "wb");
  std::fwrite(copy.data(), sizeof(T), copy.size(), file);
  std::fclose(file);
}

template <class T>
void readSwapped(const OroPath& path, std::vector<T>& values) {
  std::FILE* const file = platform::openFile(path.wideText(), "rb");
  if (std::fread(values.data(), sizeof(T), values.size(), file) != values.size()) std::abort();
  std::fclose(file);
  for (T& value : values) value = swapped(value);
}

template <class T>
std::vector<T> someValues() {
  std::vector<T> values(valueCount<T>);
  for (size_t i = 0; i < values.size(); ++i) values[i] = static_cast<T>(i * 7919.0 / 16);
  return values;
}

template <int64_t perCall, class T>
void writeTyped(const OroPath& path, const std::vector<T>& values) {
  BinOutputFile file(path);
  for (int64_t i = 0; i + perCall <= valueCount<T>; i += perCall) file.Write(&values[i], perCall);
  if (!file.FlushAndClose()) std::abort();
}

template <int64_t perCall, class T>
void readTyped(const OroPath& path, std::vector<T>& values) {
  BinInputFile file(path);
  bool read = true;
  for (int64_t i = 0; i + perCall <= valueCount<T>; i += perCall) {
    read = file.Read(&values[i], perCall) && read;
  }
  if (!read) std::abort();
}

template <class T>
void compareArrays(bench::Ratios& ratios, const Files& files, const std::string& type) {
  const OroPath ours = files.path("ours");
  const OroPath theirs = files.path("theirs");
  std::vector<T> values = someValues<T>();
  const size_t size = values.size() * sizeof(T);
  const auto bytes = [&] { writeBytes(theirs, values.data(), size); };
  ratios.compare(
      "write " + type + " in bulk", "write(2)", 1.25,
      [&] { writeTyped<valueCount<T>>(ours, values); }, bytes);
  ratios.compare(
      "write " + type + " in bulk", "swapped copy and fwrite", 0,
      [&] { writeTyped<valueCount<T>>(ours, values); }, [&] { writeSwapped(theirs, values); });
  ratios.compare(
      "write three " + type + " a call", "write(2)", 1.8, [&] { writeTyped<3>(ours, values); },
      bytes);
  writeTyped<valueCount<T>>(ours, values);
  const auto readThem = [&] { readBytes(ours, values.data(), size); };
  ratios.compare(
      "read " + type + " in bulk", "read(2)", 1.1, [&] { readTyped<valueCount<T>>(ours, values); },
      readThem);
  ratios.compare(
      "read " + type + " in bulk", "fread and swap", 0,
      [&] { readTyped<valueCount<T>>(ours, values); }, [&] { readSwapped(ours, values); });
  ratios.compare(
      "read three " + type + " a call", "read(2)", 1.6, [&] { readTyped<3>(ours, values); },
      readThem);
}

// A model file of small elements, as fast as a file can be that is made in memory.
std::string buildInMemory() {
  std::string file;
  const auto put = [&](uint64_t value, int width) {
    for (int i = width - 1; i >= 0; --i) file += static_cast<char>(value >> (8 * i));
  };
  const auto patch = [&](size_t start) {
    const uint64_t size = file.size() - start;
    for (int i = 0; i < 8; ++i)
      file[start + 4 + static_cast<size_t>(i)] = static_cast<char>(size >> (8 * (7 - i)));
  };
  put(0x4B454C01, 4);
  put(0, 8);
  for (int64_t i = 0; i < elementCount; ++i) {
    const size_t start = file.size();
    put(0x00123401, 4);
    put(0, 8);
    put(static_cast<uint64_t>(i), 4);
    patch(start);
  }
  patch(0);
  return file;
}

void writeModel(const OroPath& path) {
  OroFileWrite<> writer;
  writer.Open(path);
  for (int64_t i = 0; i < elementCount; ++i) {
    writer.BeginElement(0x1234, 1);
    writer.WriteInt32(static_cast<int32_t>(i));
    writer.EndElement();
  }
  if (!writer.Close()) std::abort();
}

int64_t readModel(const OroPath& path) {
  OroFileRead<> reader;
  int64_t sum = 0;
  if (!reader.Open(path)) std::abort();
  while (!reader.AtElementEnd()) {
    int32_t value = 0;
    reader.BeginElement();
    reader.ReadInt32(value);
    reader.EndElement();
    sum += value;
  }
  if (!reader.IsGood()) std::abort();
  return sum;
}

// One element after the other in one file, for the time that one takes: below 100 ns.
class Nesting {
 public:
  explicit Nesting(const OroPath& path) { writer_.Open(path); }
  void operator()() {
    writer_.BeginElement(0x1234, 1);
    writer_.EndElement();
  }

 private:
  OroFileWrite<> writer_;
};

// The same in memory.
class NestingInMemory {
 public:
  void operator()() {
    const size_t start = bytes_.size();
    bytes_.append("\x00\x12\x34\x01\0\0\0\0\0\0\0\0", 12);
    const uint64_t size = __builtin_bswap64(bytes_.size() - start);
    std::memcpy(&bytes_[start + 4], &size, sizeof size);
  }

 private:
  std::string bytes_;
};

void compareModels(bench::Ratios& ratios, const Files& files) {
  ratios.compareSessions(
      "begin and end an element", "in memory", 0, [&] { return Nesting(files.path("nesting")); },
      [] { return NestingInMemory(); });
  const OroPath ours = files.path("model");
  const OroPath theirs = files.path("memory");
  ratios.compare(
      "write 1,000,000 elements", "built in memory", 0, [&] { writeModel(ours); },
      [&] {
        const std::string file = buildInMemory();
        writeBytes(theirs, file.data(), file.size());
      });
  std::string bytes(static_cast<size_t>(elementCount) * 16 + 12, '\0');
  writeModel(ours);
  ratios.compare(
      "read 1,000,000 elements", "read(2) of the file", 0,
      [&] { benchmark::DoNotOptimize(readModel(ours)); },
      [&] { readBytes(ours, bytes.data(), bytes.size()); });
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  const Files files;
  compareArrays<double>(ratios, files, "doubles");
  compareArrays<int32_t>(ratios, files, "32-bit integers");
  compareModels(ratios, files);
  return 0;
}
