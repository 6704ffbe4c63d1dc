// A component library as an author writes it, over the kit.

#include <stdexcept>

#include "components/kit/orocomponentrecord.h"
#include "orobasictypes/oromodule.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/sptr.h"
#include "tests/framework/libs/itestprobe.h"
#include "tests/framework/libs/testids.h"

namespace {

int32_t startedCount = 0;
int32_t stoppingCount = 0;

class KelProbe : public ITestProbe {
 public:
  static constexpr const char* className() { return "KelProbe"; }
  using Offers = OroOffers<KelProbe, ITestProbe>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t startedCalls() override { return startedCount; }
  int32_t stoppingCalls() override { return stoppingCount; }
  void componentName(KelCString& out) override { out = oroModuleIdentity().componentName; }
  void groupName(KelCString& out) override { out = oroModuleIdentity().groupName; }
  void componentId(GUID& out) override { out = oroModuleIdentity().componentId; }
  ITestProbe* probeService() override { return SPtr<ITestProbe>().get(); }
};

IOroUnknown* makeNothing() { return nullptr; }
IOroUnknown* throwInstead() { throw std::runtime_error("no object today"); }

constexpr OroClassEntry kClasses[] = {
    {testids::kPlainClass, KelProbe::className(), OroSharing::eachNew, oroMake<KelProbe>},
    {testids::kSharedClass, KelProbe::className(), OroSharing::shared, oroMake<KelProbe>},
    {testids::kNullClass, "KelNothing", OroSharing::eachNew, makeNothing},
    {testids::kThrowingClass, "KelThrower", OroSharing::shared, throwInstead},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"good", testids::kGood, kClasses,
                                            [] { ++startedCount; }, [] { ++stoppingCount; }};
