// settingsInfo: a settings document, each value with where it comes from: the document itself,
// which a session has as layer 1 of the setting, or the journal beside it, whose values take the
// place of the document's when it is next read.
//
// Nothing is merged and no file is changed. Needs the service IOroDOMXml. One thread.
#pragma once

#include "gui/apps/cowlinfo/inforeport.h"

class OroPath;

InfoReport settingsInfo(const OroPath& path);
