// The break flag: whether failed assertions may stop in a debugger. For those who handle them; the
// host itself does not look at it.
//
// It is false from the start only when the environment variable ORO_BREAK_ENABLED is exactly "0".
// Each module has its own. Any thread.
#pragma once

bool kelBreakEnabled();
void kelSetBreakEnabled(bool enabled);
