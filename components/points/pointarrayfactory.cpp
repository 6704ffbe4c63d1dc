#include "components/points/pointarrayfactory.h"

#include "orobasictypes/binmagic.h"
#include "orobasictypes/orovectorarray.h"

IRealPArray* PointArrayFactory::MakeFromChunk(int32_t tag, int32_t size) {
  const bool isKnown = OroVectorArray::IsVectorArrayTag(tag) ||
                       OroVectorArray::IsVectorArrayTag(BinMagic(tag).GetId());
  return isKnown ? new OroVectorArray(size) : nullptr;
}
