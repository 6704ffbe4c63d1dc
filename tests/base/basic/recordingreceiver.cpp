#include "tests/base/basic/recordingreceiver.h"

#include <sstream>

#include "orobasictypes/orostring.h"

namespace tests {

namespace {

template <class... Parts>
std::string line(const Parts&... parts) {
  std::ostringstream stream;
  const char* between = "";
  ((stream << between << parts, between = " "), ...);
  return stream.str();
}

}  // namespace

void RecordingReceiver::record(const std::string& call) {
  calls.push_back(call);
  if (shared_ != nullptr) shared_->push_back(name_ + ": " + call);
  const auto running = handler;  // it may replace itself
  if (running) running();
}

void RecordingReceiver::OnBlobChanged(const char* path, const void* data, int32_t size) {
  const std::string bytes(static_cast<const char*>(data), static_cast<size_t>(size));
  record(line("blob", path, bytes));
}

void RecordingReceiver::OnIntExChanged(const char* path, int32_t value, int32_t extra) {
  record(line("intex", path, value, extra));
}

void RecordingReceiver::OnOroStringChanged(const char* path, const OroString& text) {
  record(line("wide", path, text.toUtf8()));
}

void RecordingReceiver::OnStringChanged(const char* path, const char* text) {
  record(line("string", path, text));
}

void RecordingReceiver::OnFloatChanged(const char* path, double value) {
  record(line("float", path, value));
}

void RecordingReceiver::OnIntChanged(const char* path, int32_t value) {
  record(line("int", path, value));
}

void RecordingReceiver::OnVoidFired(const char* path) { record(line("void", path)); }

}  // namespace tests
