#include "base/basic/keldatafactories.h"

#include <gtest/gtest.h>

#include "base/basic/keldatastore.h"
#include "orobasictypes/orostring.h"

namespace {

std::string classOf(const IPtr<IKelDataVisitor>& visitor) {
  return visitor ? visitor->getClassName() : "none";
}

TEST(DataFactories, StoreMakesBinaryReadersAndWriters) {
  const IPtr<IDataStore> store(new KelDataStore(true, 5, 20));
  const OroString path(u"user.dat");
  const IPtr<IKelDataVisitor> reader(store->CreateFileReader(path, true));
  const IPtr<IKelDataVisitor> writer(store->CreateFileWriter(path));
  EXPECT_EQ(classOf(reader), "KelDataFileReader");
  EXPECT_EQ(reader->GetMode(), IKelDataVisitor::kReading);
  EXPECT_EQ(classOf(writer), "KelDataFileWriter");
  EXPECT_EQ(writer->GetMode(), IKelDataVisitor::kWriting);
}

}  // namespace
