#include "gui/apps/cowlinfo/inforeport.h"

#include "platform/streams.h"
#include "platform/systemerror.h"
#include "platform/text.h"

namespace {

std::string problemOfOutput;  // the first one

}  // namespace

void InfoReport::showLines() {
  shown = hasLines();
  print(lines);
  lines.clear();
}

void InfoReport::print(std::string_view text) {
  platform::clearSystemError();
  if (platform::writeStandardOutput(text) || !problemOfOutput.empty()) return;
  problemOfOutput = platform::toUtf8Lossy(platform::systemErrorText());
  if (problemOfOutput.empty()) problemOfOutput = "it could not be written";
}

const std::string& InfoReport::outputProblem() { return problemOfOutput; }
