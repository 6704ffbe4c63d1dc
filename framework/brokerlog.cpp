#include "framework/brokerlog.h"

#include <cstdio>
#include <optional>
#include <string>

#include "framework/testaccess.h"
#include "orobasictypes/kelcstring.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/streams.h"

namespace {

std::FILE* stream = nullptr;
bool opened = false;  // the variable was read

}  // namespace

namespace brokerlog {

void openOnce() {
  if (opened) return;
  opened = true;
  const std::optional<std::u16string> path = platform::environmentWide(u"OroObjectBrokerLog");
  if (path && !path->empty()) stream = platform::openFile(*path, "wt");
}

void write(const KelCString& interfaceName) {
  openOnce();
  if (stream == nullptr) return;
  const platform::LocalTime now = platform::localTime();
  char time[64];
  std::snprintf(time, sizeof time, "%2d:%02d:%02d.%03d", now.hour, now.minute, now.second,
                now.millisecond);
  platform::writeStream(stream, std::string(time) + "  " + interfaceName.c_str() + "\n");
}

void close() {
  if (stream != nullptr) std::fclose(stream);
  stream = nullptr;
}

}  // namespace brokerlog

namespace testaccess {

void resetBrokerLog() {
  brokerlog::close();
  opened = false;
}

}  // namespace testaccess
