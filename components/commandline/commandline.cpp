#include "components/commandline/commandline.h"

#include <algorithm>
#include <string_view>

#include "components/commandline/runoutcome.h"
#include "interfaces/IDataStore.h"
#include "orobasictypes/orofile.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr int32_t kTextCapacity = 32767;
constexpr int32_t kMostDateAndTime = 3;

// The settings document is named by these; the settings store reads them itself.
constexpr const char16_t* kPassedOver[] = {u"-inifile=", u"-ini_out="};

bool isPassedOver(const OroString& argument) {
  for (const char16_t* prefix : kPassedOver) {
    const OroString head(prefix);
    if (argument.startsWith(head, head.length())) return true;
  }
  return false;
}

}  // namespace

enum class CommandLine::Value { none, text, onOff, dateAndTime };

struct CommandLine::Option {
  const char* name;
  Value value;
  const char* setting;
};

namespace {

constexpr const char* kBatchDirectory = "Advanced/Batch Processing";
constexpr const char* kExitStatusOption = "-exitstatus";
constexpr const char* kLogOption = "-logfile";

int32_t refusalStatus = 0;  // of the last command line

}  // namespace

std::span<const CommandLine::Option> CommandLine::options() {
  static constexpr Option kOptions[] = {
      {"-script", Value::text, "Scripting/Startup Macro"},
      {"-input", Value::text, "Scripting/Input File"},
      {"-output", Value::text, "Scripting/Output File"},
      {"-progress", Value::onOff, "GUI/CommandLine Progress Window"},
      {kLogOption, Value::text, "GUI/CommandLine Log File"},
      {"-batch", Value::none, "Advanced/Batch Processing/Enabled"},
      {"-inputDir", Value::text, "Advanced/Batch Processing/Input Directory"},
      {"-outputDir", Value::text, "Advanced/Batch Processing/Output Directory"},
      {"-saveActiveOnly", Value::onOff, "Advanced/Batch Processing/Save Active Only"},
      {"-prefix", Value::text, "Advanced/Batch Processing/Prefix"},
      {"-postfix", Value::text, "Advanced/Batch Processing/Postfix"},
      {"-dt", Value::dateAndTime, "Advanced/Batch Processing/Date and Time"},
      {kExitStatusOption, Value::none, RunOutcome::kExitStatus},
      {"-verbose", Value::none, RunOutcome::kVerbose},
  };
  return kOptions;
}

const CommandLine::Option* CommandLine::findOption(const OroString& name) {
  for (const Option& option : options()) {
    if (name == option.name) return &option;
  }
  return nullptr;
}

std::vector<std::string> CommandLine::optionNames() {
  std::vector<std::string> names;
  for (const Option& option : options()) names.emplace_back(option.name);
  for (const char16_t* prefix : kPassedOver) names.emplace_back(OroString(prefix).toNarrow());
  return names;
}

int32_t CommandLine::statusOfRefusal() { return refusalStatus; }

bool CommandLine::parse(int32_t argc, const OroString* argv) {
  refusalStatus = 0;
  if (take(argc, argv)) return true;
  const bool wanted = std::any_of(argv + 1, argv + argc, [](const OroString& argument) {
    return argument == kExitStatusOption;
  });
  if (wanted) refusalStatus = RunOutcome::kRefusedStatus;
  return false;
}

bool CommandLine::take(int32_t argc, const OroString* argv) {
  changes_.clear();
  errorText_ = OroString::empty();
  for (int32_t i = 1; i < argc; ++i) {
    const OroString name = oroArgumentText(argv[i]);
    if (isPassedOver(name)) continue;
    const Option* option = findOption(name);
    if (option == nullptr) return refuse("Unknown option: %1", name);
    OroString value;
    if (option->value != Value::none) {
      const bool present = i + 1 < argc;
      if (present) value = oroArgumentText(argv[++i]);
      if (!present || isPassedOver(value) || findOption(value) != nullptr) {
        return refuse("The option %1 needs a value", name);
      }
    }
    if (!read(*option, value)) return false;
  }
  if (!keepsLogApart()) return false;
  SPtr<IDataStore> store;
  if (store && apply(*store)) return true;
  return changes_.empty() || refuse("The settings for the command line are missing", OroString());
}

bool CommandLine::read(const Option& option, const OroString& value) {
  int32_t number = 0;
  if (option.value == Value::none) {
    number = 1;
  } else if (option.value == Value::onOff) {
    number = value == "on" ? 1 : 0;
    if (number == 0 && value != "off") {
      return refuse("The option %1 takes on or off, not %2", OroString(option.name), value);
    }
  } else if (option.value == Value::dateAndTime) {
    const bool digit =
        value.length() == 1 && value.at(0) >= u'0' && value.at(0) <= u'0' + kMostDateAndTime;
    if (!digit) {
      return refuse("The option %1 takes a number from 0 to 3, not %2", OroString(option.name),
                    value);
    }
    number = value.at(0) - u'0';
  }
  changes_.push_back({&option, value, number});
  return true;
}

// The value that counts; empty when the option is not there.
const OroString& CommandLine::asked(const char* option) const {
  for (auto change = changes_.rbegin(); change != changes_.rend(); ++change) {
    if (std::string_view(change->option->name) == option) return change->text;
  }
  return OroString::empty();
}

// The records are written from the start on, in place of what the run is about to read, and what it
// saves takes theirs.
bool CommandLine::keepsLogApart() {
  const OroString& log = asked(kLogOption);
  if (log.isEmpty() || log == "stdout" || log == "stderr") return true;
  for (const char* const option : {"-input", "-script", "-output"}) {
    const OroString& file = asked(option);
    if (file.isEmpty()) continue;
    if (OroPath(log).compareOrdinal(OroPath(file)) != 0 && !oroIsSameFile(log, file)) continue;
    return refuse("The options %1 and %2 name one file", OroString(option), OroString(kLogOption));
  }
  // A new file there is no point file and counts as failed; one that is there would be lost.
  const OroString& directory = asked("-inputDir");
  if (directory.isEmpty()) return true;
  return !oroIsSameFile(log, OroPath(directory).joined(OroPath(log).fileName())) ||
         refuse("The option %1 names a file in the directory of %2", OroString(kLogOption),
                OroString("-inputDir"));
}

// The settings of the batch belong to this library and are declared here; those of the flow are
// declared by the executable.
bool CommandLine::apply(IDataStore& store) const {
  constexpr int32_t kLeast = -2147483647 - 1;
  constexpr int32_t kMost = 2147483647;
  store.CreateDirectory("GUI");
  store.CreateDirectory("Advanced");
  store.CreateDirectory(kBatchDirectory);
  for (const Change& change : changes_) {
    const char* setting = change.option->setting;
    if (change.option->value == Value::text) {
      store.CreateOroString(setting, kTextCapacity, OroString::empty(), 0);
      if (!store.SetOroString(nullptr, setting, change.text)) return false;
    } else {
      store.CreateInt(setting, 0, kLeast, kMost, 0);
      if (!store.SetInt(nullptr, setting, change.number)) return false;
    }
  }
  return true;
}

bool CommandLine::refuse(const char* key, const OroString& a1, const OroString& a2) {
  oroTranslate(errorText_, key, a1, a2);
  return false;
}
