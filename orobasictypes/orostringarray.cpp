#include "orobasictypes/orostringarray.h"

#include <algorithm>

const OroString& OroStringArray::operator[](int32_t index) const {
  index = std::max(index, 0);
  return index < texts_.capacity() ? texts_[index] : OroString::empty();
}
