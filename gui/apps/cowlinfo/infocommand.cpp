#include "gui/apps/cowlinfo/infocommand.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "gui/apps/cowlinfo/descriptioninfo.h"
#include "gui/apps/cowlinfo/infosession.h"
#include "gui/apps/cowlinfo/infotext.h"
#include "gui/apps/cowlinfo/modelinfo.h"
#include "gui/apps/cowlinfo/pointinfo.h"
#include "gui/apps/cowlinfo/settingsinfo.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "platform/files.h"
#include "platform/filestatus.h"
#include "platform/streams.h"
#include "platform/text.h"

namespace {

constexpr std::string_view kUsage =
    "Usage:\n\n"
    "  cowlinfo [OPTION]... FILE...\n\n"
    "Shows what is in point files, model files, settings documents and application\n"
    "descriptions. What a file is shows in its content; the options say it instead.\n\n"
    "  --points       point files: count, bounds, attributes\n"
    "  --model        model files: the tree of elements\n"
    "  --settings     settings documents: the values, and where each comes from\n"
    "  --description  an application description: its components, each loaded in turn\n"
    "  --help         this text\n"
    "  --version      the version\n\n"
    "Status: 0 all is well, 1 bad options, 2 a file cannot be read or is damaged or\n"
    "the output was not taken, 3 something is wrong with what a description names.\n";

enum class Kind { guess, points, model, settings, description };

struct Request {
  Kind kind = Kind::guess;
  std::vector<std::string> files;
};

Kind kindOption(std::string_view option) {
  if (option == "--points") return Kind::points;
  if (option == "--model") return Kind::model;
  if (option == "--settings") return Kind::settings;
  return option == "--description" ? Kind::description : Kind::guess;
}

bool isOption(const std::string& argument) { return argument.size() > 1 && argument[0] == '-'; }

int refuse(const std::string& problem) {
  platform::writeStandardError("cowlinfo: " + problem + "\nTry cowlinfo --help\n");
  return kInfoUsage;
}

OroPath pathOf(const std::string& utf8) {
  return OroPath(OroString(platform::fromSystemPath(utf8).c_str()));
}

// The front of a file; a file that cannot be read has none.
std::string frontOf(const OroPath& path) {
  OroFileReader file;
  std::string front(4096, '\0');
  if (!file.open(path)) return {};
  front.resize(file.read(front.data(), front.size()));
  return front;
}

Kind kindOf(const OroPath& path) {
  const std::string front = frontOf(path);
  if (front.substr(0, 3) == "KEL") return Kind::model;
  if (front.find("<OroDataStore") != front.npos) return Kind::settings;
  if (front.find("cowl-application") != front.npos) return Kind::description;
  const OroString extension = path.extension().toLower();
  if (extension == "iniml") return Kind::settings;
  return extension == "description" ? Kind::description : Kind::points;
}

InfoReport look(InfoSession& session, Kind kind, const OroPath& path) {
  switch (kind) {
    case Kind::model:
      return modelInfo(path);
    case Kind::settings:
      return settingsInfo(path);
    case Kind::description:
      return descriptionInfo(session, path);
    default:
      return pointInfo(path);
  }
}

int statusOf(const InfoReport& report, Kind kind) {
  if (report.good()) return kInfoGood;
  return kind == Kind::description && report.hasLines() ? kInfoProblems : kInfoUnreadable;
}

// Why there is nothing to look at; empty where there is.
std::string obstacle(const OroPath& path) {
  platform::FileStatus status;
  if (!platform::fileStatus(path.wideText(), status)) return infoText("not found");
  if (status.isDirectory) return infoText("is a directory");
  // A pipe may never come to an end, and gives its bytes once.
  return platform::isFile(path.wideText()) ? std::string() : infoText("is no plain file");
}

// A file of the command line.
struct Item {
  Item(const Request& request, const std::string& file)
      : name(file), path(pathOf(file)), missing(obstacle(path)), kind(request.kind) {
    if (missing.empty() && kind == Kind::guess) kind = kindOf(path);
  }

  std::string name;
  OroPath path;
  std::string missing;  // why it cannot be looked at
  Kind kind;
};

InfoReport look(InfoSession& session, const Item& item) {
  InfoReport report;
  if (item.missing.empty()) return look(session, item.kind, item.path);
  report.problems.push_back(item.missing);
  return report;
}

int show(InfoSession& session, const Item& item) {
  InfoReport report = look(session, item);
  report.showLines();
  std::string problems;
  for (const std::string& text : session.takeReports()) problems += "cowlinfo: " + text + "\n";
  for (const std::string& text : report.problems) {
    problems += "cowlinfo: " + shownText(item.name) + ": " + text + "\n";
  }
  platform::writeStandardError(problems);
  return statusOf(report, item.kind);
}

bool needsComponents(const Item& item) {
  return item.missing.empty() && (item.kind == Kind::points || item.kind == Kind::settings);
}

// Of what standard output did not take somebody has to hear.
int outputStatus() {
  if (InfoReport::outputProblem().empty()) return kInfoGood;
  platform::writeStandardError("cowlinfo: standard output: " + InfoReport::outputProblem() + "\n");
  return kInfoUnreadable;
}

int print(std::string_view text) {
  InfoReport::print(text);
  return outputStatus();
}

int showAll(const Request& request) {
  std::vector<Item> items;
  for (const std::string& file : request.files) items.emplace_back(request, file);
  const bool describes = std::any_of(
      items.begin(), items.end(), [](const Item& item) { return item.kind == Kind::description; });
  // A description brings the components of its own; two would mix theirs.
  if (describes && items.size() > 1) return refuse("a description is looked at alone");
  InfoSession session;
  if (std::any_of(items.begin(), items.end(), needsComponents)) session.loadComponents();
  int status = kInfoGood;
  for (const Item& item : items) status = std::max(status, show(session, item));
  return std::max(status, outputStatus());
}

}  // namespace

const std::vector<std::string>& infoOptionNames() {
  static const std::vector<std::string> names = {"--points",      "--model", "--settings",
                                                 "--description", "--help",  "--version"};
  return names;
}

int runInfo(const std::vector<std::string>& arguments) {
  Request request;
  bool onlyFiles = false;
  for (const std::string& argument : arguments) {
    if (onlyFiles || !isOption(argument)) {
      request.files.push_back(argument);
    } else if (argument == "--") {
      onlyFiles = true;
    } else if (argument == "--help") {
      return print(kUsage);
    } else if (argument == "--version") {
      return print("cowlinfo " COWL_INFO_VERSION "\n");
    } else if (kindOption(argument) != Kind::guess) {
      request.kind = kindOption(argument);
    } else {
      return refuse("unknown option " + shownText(argument));
    }
  }
  return request.files.empty() ? refuse("which file?") : showAll(request);
}
