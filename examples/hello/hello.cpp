#include "components/kit/orocomponentrecord.h"
#include "examples/hello/igreeter.h"
#include "interfaces/IDataStore.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"

namespace {

constexpr GUID kComponentId = {
    0x3F6A1C52, 0x8E0D, 0x4B97, {0xA4, 0x1B, 0x60, 0xC9, 0x5D, 0x2E, 0x71, 0x08}};
constexpr GUID kGreeterClass = {
    0xB1D4E2A7, 0x06C3, 0x4F5E, {0x92, 0x3A, 0x7D, 0x18, 0xCB, 0x40, 0x96, 0xEF}};

class KelGreeter : public IGreeter {
 public:
  static constexpr const char* className() { return "KelGreeter"; }
  using Offers = OroOffers<KelGreeter, IGreeter>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  OroString greet(const OroString& name) override {
    ++greeted_;
    OroString text;
    return oroTranslate(text, "Hello, %1!", name);
  }
  int32_t greeted() override { return greeted_; }

 private:
  int32_t greeted_ = 0;
};

void declareSettings() {
  const SPtr<IDataStore> settings;
  if (!settings) return;
  settings->CreateDirectory("Hello");
  settings->CreateInt("Hello/Loud", 0, 0, 1, 0);
}

constexpr OroClassEntry kClasses[] = {
    {kGreeterClass, KelGreeter::className(), OroSharing::shared, oroMake<KelGreeter>},
};

}  // namespace

const OroComponentRecord oroComponentRecord{"hello", kComponentId, kClasses, declareSettings};
