// descriptionInfo: an application description with its components, classes and interfaces, each
// component loaded in turn, and what is wrong with it.
//
// The libraries run: their entry points are called and an object of each class is made. They stay
// loaded. Once in a process, on the main thread, in an InfoSession of its own.
#pragma once

#include "gui/apps/cowlinfo/inforeport.h"

class InfoSession;
class OroPath;

InfoReport descriptionInfo(InfoSession& session, const OroPath& path);
