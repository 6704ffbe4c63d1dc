// The places of the operations that component libraries and the host call on one another.

#include <gtest/gtest.h>

#include "interfaces/ICmdLine.h"
#include "interfaces/ICommandRegistration.h"
#include "interfaces/IExitService.h"
#include "interfaces/IFileSaveData.h"
#include "interfaces/IFileTypeService.h"
#include "interfaces/IGenApp.h"
#include "interfaces/IKelInitServer.h"
#include "interfaces/IMemoryInit.h"
#include "interfaces/IOroAppMainHook.h"
#include "interfaces/IOroAppMainV2.h"
#include "interfaces/IOroAppStarter.h"
#include "interfaces/IOroBatchProcessingService.h"
#include "interfaces/IOroDoc.h"
#include "interfaces/IOroDocObject.h"
#include "interfaces/IOroDocObjectItr.h"
#include "interfaces/IOroMManager.h"
#include "interfaces/IOroNetworkService.h"
#include "interfaces/IOroOpenDoc.h"
#include "interfaces/IOroSaveDoc.h"
#include "interfaces/IOroWorldData.h"
#include "interfaces/IScriptEngine.h"
#include "interfaces/IWriteScene.h"
#include "interfaces/IWriteSceneV3.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::slotNumber;

// For a plain class, whose destructor counts as number 1 and takes two places.
template <class Operation>
int slotBehindDestructor(Operation operation) {
  return slotNumber(operation) - 1;
}

TEST(ShellSlots, StartAndEnd) {
  EXPECT_EQ(slotNumber(&IKelInitServer::readDescription), 1);
  EXPECT_EQ(slotNumber(&IKelInitServer::finish), 2);
  EXPECT_EQ(slotNumber(&IKelInitServer::setClassRegistration), 3);
  EXPECT_EQ(slotNumber(&IOroAppStarter::init), 1);
  EXPECT_EQ(slotNumber(&IOroAppStarter::initDone), 2);
  EXPECT_EQ(slotNumber(&IOroAppStarter::start), 3);
  EXPECT_EQ(slotNumber(&IOroAppStarter::run), 4);
  EXPECT_EQ(slotNumber(&IOroAppStarter::shutDown), 5);
  EXPECT_EQ(slotNumber(&IExitService::exit), 1);
  EXPECT_EQ(slotNumber(&IMemoryInit::end), 4);
  EXPECT_EQ(slotNumber(&IOroNetworkService::updateNetworkState), 1);
}

TEST(ShellSlots, ApplicationMainCountsItsDestructor) {
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::init), 2);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::initEssential), 3);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::initConfigurable), 4);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::run), 5);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::shutDown), 6);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::objectBroker), 7);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMain::setErrorHandler), 8);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMainV2::errorText), 9);
  EXPECT_EQ(slotBehindDestructor(&IOroAppMainHook::beforeEnvironment), 2);
}

TEST(ShellSlots, MemoryManager) {
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::AllocBlock), 1);
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::FreeBlock), 2);
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::ReleaseMemory), 4);
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::CoreLimit), 11);
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::SwapLimit), 12);
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::SwapPages), 13);
  EXPECT_EQ(slotNumber(&OroMM::IOroMManager::CorePages), 18);
}

TEST(ShellSlots, CommandLineAndCommands) {
  EXPECT_EQ(slotNumber(&ICmdLine::parse), 1);
  EXPECT_EQ(slotNumber(&ICmdLine::errorText), 4);
  EXPECT_EQ(slotNumber(&IGenApp::prepare), 2);
  EXPECT_EQ(slotNumber(&ICommandRegistration::registerCommands), 2);
  EXPECT_EQ(slotNumber(&ICommandRegistration::commandsRegistered), 4);
  EXPECT_EQ(slotNumber(&IScriptEngine::runScript), 10);
  EXPECT_EQ(slotNumber(&IScriptEngine::setContinue), 14);
  EXPECT_EQ(slotNumber(&IOroBatchProcessingService::run), 1);
}

TEST(ShellSlots, Document) {
  EXPECT_EQ(slotNumber(&IOroDoc::makeDocument), 2);
  EXPECT_EQ(slotNumber(&IOroDoc::objectIterator), 38);
  EXPECT_EQ(slotNumber(&IOroDocObject::name), 1);
  EXPECT_EQ(slotNumber(&IOroDocObject::data), 2);
  EXPECT_EQ(slotNumber(&IOroDocObjectItr::atEnd), 1);
  EXPECT_EQ(slotNumber(&IOroDocObjectItr::next), 2);
  EXPECT_EQ(slotNumber(&IOroDocObjectItr::current), 3);
  EXPECT_EQ(slotNumber(&IOroWorldData::excludedFromSave), 12);
}

TEST(ShellSlots, OpenAndSave) {
  EXPECT_EQ(slotNumber(&IOroOpenDoc::open), 2);
  EXPECT_EQ(slotNumber(&IOroOpenDoc::setMode), 6);
  EXPECT_EQ(slotNumber(&IOroOpenDoc::setText), 10);
  EXPECT_EQ(slotNumber(&IFileSaveData::path), 1);
  EXPECT_EQ(slotNumber(&IFileSaveData::setPath), 2);
  EXPECT_EQ(slotNumber(&IFileSaveData::status), 7);
  EXPECT_EQ(slotNumber(&IFileSaveData::setStatus), 8);
  EXPECT_EQ(slotNumber(&IFileTypeService::writerFor), 15);
  EXPECT_EQ(slotNumber(&IWriteScene::setSaveData), 12);
  EXPECT_EQ(slotNumber(&IWriteScene::canSave), 13);
  EXPECT_EQ(slotNumber(&IWriteScene::addObject), 14);
  EXPECT_EQ(slotNumber(&IWriteSceneV3::prepare), 1);
  EXPECT_EQ(slotNumber(&IOroSaveDoc::save), 11);
}

}  // namespace
