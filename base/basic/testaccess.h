// What the settings store looks up once and keeps, made new for a test. Only tests include this.
#pragma once

namespace testaccess {

// The default paths of the settings document.
void resetSettingsPaths();

}  // namespace testaccess
