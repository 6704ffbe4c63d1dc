// Attaches the headless service with its argument as the log setting, shows a command, and ends
// with status 7.

#include "headless/attachheadless.h"
#include "interfaces/IInfoBar.h"
#include "interfaces/IInfoBar2.h"
#include "orobasictypes/sptr.h"
#include "platform/streams.h"
#include "tests/headless/headlessworld.h"

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  tests::HeadlessWorld world;
  world.setLogFile(std::string(argv[1]));
  platform::writeStandardOutput("before\n");
  attachHeadlessService();
  {
    SPtr<IInfoBar> bar;
    IInfoBar2* commands = oroQuery<IInfoBar2>(bar.get());
    commands->startCommand(&world, OroString(u"Open \u20AC"));
    bar->setPercent(50);
    world.errors().report(OroString("bad"), 1, KelCString());
    commands->stopCommand(&world);
  }
  detachHeadlessService();
  platform::writeStandardError("after\n");
  return 7;
}
