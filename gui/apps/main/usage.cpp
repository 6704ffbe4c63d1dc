#include "gui/apps/main/usage.h"

#include <algorithm>

#include "orobasictypes/orostring.h"
#include "platform/console.h"
#include "platform/streams.h"

namespace {

// People and scripts know these texts; the words are kept as they are.
constexpr std::string_view kOptions =
    "  Options:\n"
    "    -script file\tspecify script to run\n"
    "    -input file\t\tload file at the beginning\n"
    "    -output file\tsave file at the end\n"
    "    -progress on/off\tshow or progress window, off by default\n"
    "    -logfile filename\tlog progress into file or console\n"
    "    \t\t\t use stdout/strerr for console output\n";

constexpr std::string_view kBatchOptions =
    "\n"
    "  Batch Options:\n"
    "    -inputDir\t\tinput directory\n"
    "    -outputDir\t\toutput directory\n"
    "    -saveActiveOnly on/off\tsave active objects only\n"
    "    -prefix\t\toutput file name prepend string\n"
    "    -postfix\t\toutput file name append string\n"
    "    -dt number\t\tdate & time (0-3 range):\n"
    "    \t\t\t 0 - none, 1 - date,\n"
    "    \t\t\t 2 - time, 3 - date & time\n";

constexpr std::string_view kSiblingOptions =
    "    -ref\t\treference object file to load\n"
    "    -workflow\t\tworkflow/automation name to run\n";

bool isSibling(std::string_view programName) {
  std::string lowered(programName);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  const auto has = [&](const char* part) { return lowered.find(part) != lowered.npos; };
  return has("meter") || has("tally") || has("tlly");
}

// The bytes of an argument: its units are sign-extended bytes.
std::string bytesOf(const OroString& argument) {
  std::string bytes;
  for (const char16_t* unit = argument.wideText(); *unit != 0; ++unit) {
    bytes += static_cast<char>(*unit & 0xff);
  }
  return bytes;
}

}  // namespace

bool isHelpRequest(int32_t argc, const OroString* argv) {
  if (argc < 2) return false;
  return argv[1] == "-h" || argv[1] == "-help" || argv[1] == "/?";
}

std::string usageText(std::string_view programName) {
  std::string text = "Usage:\n\n  ";
  text.append(programName).append(" [options]\n  ");
  text.append(programName).append(" -batch [options] [batchoptions]\n\n");
  text.append(kOptions).append(kBatchOptions);
  if (isSibling(programName)) text.append(kSiblingOptions);
  return text += "\n  For further information, refer to product documentation.\n\n";
}

bool printUsage(int32_t argc, const OroString* argv) {
  const std::string text = usageText(argc > 0 ? bytesOf(argv[0]) : std::string());
  platform::writeUsageToConsole(text);
  platform::writeStandardOutput(text);
  return true;
}
