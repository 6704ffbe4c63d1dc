// The type names of the values of a settings document, as texts that are copied without allocating.
#pragma once

#include "orobasictypes/orostring.h"

namespace keldataxmltypes {

inline constinit const OroString integer(u"integer", "integer");
inline constinit const OroString floating(u"float", "float");
inline constinit const OroString narrow(u"text_latin1", "text_latin1");
inline constinit const OroString wide(u"text_unicode", "text_unicode");
inline constinit const OroString blob(u"binary_base64", "binary_base64");

}  // namespace keldataxmltypes
