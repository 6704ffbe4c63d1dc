#include "base/basic/keldatahashremover.h"

#include "base/basic/keldatahashverifier.h"
#include "tests/base/basic/storetest.h"

namespace {

class IndexVisitorTest : public tests::StoreTest {};

TEST_F(IndexVisitorTest, RemoverTakesItemsOfEveryKindButEventsOutOfTheIndex) {
  store.CreateDirectory("A");
  store.CreateInt("A/i", 0, 0, 1, 0);
  store.CreateFloat("A/f", 0, 0, 1, 0);
  store.CreateString("A/s", 1, "", 0);
  store.CreateOroString("A/w", 1, OroString(), 0);
  store.CreateBlob("A/b", 0, nullptr, 0);
  store.CreateVoid("A/v", 0);
  KelDataHashRemover remover(store);
  EXPECT_EQ(remover.GetMode(), IKelDataVisitor::kReading);
  EXPECT_TRUE(store.AcceptPath(&remover, "A"));
  for (const char* path : {"A", "A/i", "A/f", "A/s", "A/w", "A/b"}) {
    EXPECT_FALSE(store.Exists(path)) << path;
  }
  EXPECT_TRUE(store.Exists("A/v"));
}

TEST_F(IndexVisitorTest, RemoverGoesOnAfterAnItemThatTheIndexDoesNotHave) {
  makeInt("A/i");
  makeInt("A/j");
  store.unindexItem("A/i");
  KelDataHashRemover remover(store);
  EXPECT_FALSE(store.AcceptPath(&remover, "A"));
  EXPECT_FALSE(store.Exists("A/j"));
  EXPECT_FALSE(store.DirectoryExists("A"));
}

TEST_F(IndexVisitorTest, RemoverKnowsDirectoriesByTheirLastSegment) {
  store.CreateDirectory("A/B");
  store.CreateDirectory("B");
  KelDataHashRemover remover(store);
  store.AcceptPath(&remover, "A/B");
  EXPECT_TRUE(store.DirectoryExists("A/B"));
  EXPECT_FALSE(store.DirectoryExists("B"));
}

TEST_F(IndexVisitorTest, VerifierChangesNothingAndComparesWithTheIndexes) {
  makeInt("A/i");
  KelDataHashVerifier verifier(store);
  EXPECT_TRUE(store.Accept(&verifier));
  EXPECT_TRUE(store.Exists("A/i"));
  store.unindexItem("A/i");
  EXPECT_FALSE(store.Accept(&verifier));
}

TEST_F(IndexVisitorTest, VerifierDoesNotFindADirectoryInsideAnother) {
  store.CreateDirectory("A");
  store.CreateDirectory("A/B");
  KelDataHashVerifier verifier(store);
  EXPECT_FALSE(store.Accept(&verifier));
  store.CreateDirectory("B");
  EXPECT_TRUE(store.Accept(&verifier));
}

TEST_F(IndexVisitorTest, VerifierDoesNotLookAtEvents) {
  store.CreateVoid("v", 0);
  store.unindexItem("v");
  KelDataHashVerifier verifier(store);
  EXPECT_TRUE(store.Accept(&verifier));
}

}  // namespace
