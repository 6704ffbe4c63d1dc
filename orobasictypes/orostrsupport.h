// The text service of this module, asked for at the first use. Internal to the string classes.
#pragma once

class IOroStrSupport;

// Borrowed; null when there was none at the first call.
IOroStrSupport* oroStrSupport();
