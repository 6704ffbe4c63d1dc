#include "gui/apps/cowlinfo/descriptioninfo.h"

#include <cstdio>

#include "components/initserver/applicationdescription.h"
#include "components/initserver/applicationdescriptionparser.h"
#include "framework/componentload.h"
#include "gui/apps/cowlinfo/infosession.h"
#include "gui/apps/cowlinfo/infotext.h"
#include "interfaces/IOroClassRegistration.h"
#include "interfaces/IOroComponent.h"
#include "interfaces/IOroComponentLoader.h"
#include "interfaces/IOroComponentManager.h"
#include "interfaces/IOroObjBroker.h"
#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstringset.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "orobasictypes/sptr.h"
#include "platform/text.h"

namespace {

using Description = ApplicationDescription;

KelCString narrow(const std::string& text) { return KelCString(text.c_str()); }

std::string idText(const GUID& id) {
  char text[48];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(id.data1), id.data2, id.data3, id.data4[0], id.data4[1],
                id.data4[2], id.data4[3], id.data4[4], id.data4[5], id.data4[6], id.data4[7]);
  return text;
}

// A byte more than a description may have, so that a larger file is refused by its size.
bool readFile(const OroPath& path, std::string& text) {
  OroFileReader file;
  if (!file.open(path)) return false;
  text.resize(ApplicationDescriptionParser::kLargestText + 1);
  size_t size = 0;
  while (const size_t got = file.read(text.data() + size, text.size() - size)) size += got;
  text.resize(size);
  return !file.failed();
}

bool parseFile(const OroPath& path, Description& description, InfoReport& report) {
  std::string text;
  if (!readFile(path, text)) {
    report.problems.push_back(infoText("the file cannot be opened"));
    return false;
  }
  ApplicationDescriptionParser parser(description);
  if (parser.parse(text)) return true;
  report.problems.push_back(infoText("line %1: %2", std::to_string(parser.line()),
                                     infoText(parser.problem(), shownText(parser.subject()))));
  return false;
}

class DescriptionTree {
 public:
  DescriptionTree(InfoSession& session, const OroPath& path, InfoReport& report)
      : session_(session), directory_(path.parent()), report_(report) {}

  // All of it is known before anything is loaded: a library may ask for another's classes at once.
  void registerAll(const Description& description) {
    IOroObjBroker& broker = *oroBroker();
    auto* const loader = oroQuery<IOroComponentLoader>(broker.componentManager());
    SPtr<Velmora::IOroRegistry> registry;
    for (const auto& entry : description.registry) {
      KelCString key = narrow(entry.key);
      if (registry) registry->setValue(key, narrow(entry.value));
    }
    for (const auto& component : description.components) {
      loader->registerComponent(libraryOf(component), component.id, narrow(component.name),
                                narrow(component.group));
      registerClasses(component, *broker.groupBroker(narrow(component.group), true));
    }
  }

  void show(const Description& description, const std::string& name) {
    size_t classes = 0;
    for (const auto& component : description.components) classes += component.classes.size();
    report_.line(0, name + ": application description, " +
                        counted(description.components.size(), "component", "components") + ", " +
                        counted(classes, "class", "classes"));
    for (const auto& entry : description.registry) {
      report_.line(1, "registry " + shownText(entry.key) + " = " + shownText(entry.value));
    }
    for (const auto& component : description.components) showComponent(component);
  }

 private:
  static void registerClasses(const Description::ComponentEntry& component, IOroObjBroker& owner) {
    IOroClassRegistration* const classes = owner.classRegistration();
    for (const auto& entry : component.classes) {
      KelCStringSet tags;
      for (const std::string& tag : entry.tags) tags.insert(narrow(tag));
      classes->registerClass(entry.id, component.id, tags, narrow(entry.name));
      for (const std::string& name : entry.defaultOf) {
        owner.registerInterface(narrow(name), entry.id);
      }
    }
  }

  OroPath libraryOf(const Description::ComponentEntry& component) const {
    return directory_.joined(component.library.c_str());
  }

  void showComponent(const Description::ComponentEntry& component) {
    std::string text = "component " + shownText(component.library) + " \"" +
                       shownText(component.name) + "\" " + idText(component.id);
    if (!component.group.empty()) text += " in group " + shownText(component.group);
    // Loading runs code of the library: should it end the process, this is the last that is seen.
    report_.lines += "  " + text;
    report_.showLines();
    IOroComponent* loaded = nullptr;
    oroBroker()->componentManager()->getComponent(component.id, narrow(component.group), &loaded);
    const ComponentLoad* const load = session_.loadOf(libraryOf(component));
    report_.line(0, ": " + howLoaded(loaded, load));
    if (loaded == nullptr) {
      problem(component, load == nullptr ? infoText("it was not loaded") : loadProblem(*load));
    }
    for (const auto& entry : component.classes) showClass(component, entry, loaded);
  }

  static std::string howLoaded(const IOroComponent* loaded, const ComponentLoad* load) {
    if (loaded == nullptr) return "not loaded";
    if (load == nullptr) return "built in";
    char time[40];
    std::snprintf(time, sizeof time, "loaded in %.1f ms",
                  static_cast<double>(load->nanoseconds) / 1e6);
    return time;
  }

  static std::string loadProblem(const ComponentLoad& load) {
    const std::string answer = std::to_string(load.answer);
    switch (load.step) {
      case kOroLoadFile:
        return infoText("the library, or one that it needs, cannot be loaded");
      case kOroLoadEntryPoint:
        return infoText("the library has no entry point");
      case kOroLoadVersion:
        return infoText("the version of the entry point is %1, not 100", answer);
      default:
        return infoText("the entry point gave no component (status %1)", answer);
    }
  }

  void showClass(const Description::ComponentEntry& component, const Description::ClassEntry& entry,
                 IOroComponent* loaded) {
    IOroUnknown* made = nullptr;
    const int32_t status = loaded != nullptr ? loaded->getClassObject(entry.id, &made) : 0;
    const IPtr<IOroUnknown> object(made);
    std::string text = "class " + shownText(entry.name) + " " + idText(entry.id);
    if (status == 1) text += ", new for each request";
    if (status == 2) text += ", shared";
    if (entry.initializer) text += ", initializer";
    report_.line(2, text);
    for (const std::string& name : entry.defaultOf) report_.line(3, "interface " + shownText(name));
    if (loaded != nullptr) checkObject(component, entry, status, object.get());
  }

  void checkObject(const Description::ComponentEntry& component,
                   const Description::ClassEntry& entry, int32_t status, IOroUnknown* object) {
    const std::string name = shownText(entry.name);
    if (object == nullptr || (status != 1 && status != 2)) {
      problem(component, infoText("it gives no object of the class %1 (status %2)", name,
                                  std::to_string(status)));
      return;
    }
    if (entry.name != object->getClassName()) {
      problem(component, infoText("the object of the class %1 calls itself %2", name,
                                  shownText(object->getClassName())));
    }
    for (const std::string& wanted : entry.defaultOf) {
      void* found = nullptr;
      object->queryInterface(wanted.c_str(), &found);
      if (found == nullptr) {
        problem(component,
                infoText("the class %1 does not have the interface %2", name, shownText(wanted)));
      }
    }
  }

  void problem(const Description::ComponentEntry& component, const std::string& text) {
    report_.problems.push_back(infoText("component %1: %2", shownText(component.library), text));
  }

  InfoSession& session_;
  OroPath directory_;
  InfoReport& report_;
};

}  // namespace

InfoReport descriptionInfo(InfoSession& session, const OroPath& path) {
  InfoReport report;
  Description description;
  if (!parseFile(path, description, report)) return report;
  DescriptionTree tree(session, path, report);
  tree.registerAll(description);
  tree.show(description, shownText(oroShownPath(path)));
  return report;
}
