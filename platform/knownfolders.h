#pragma once

// The five folders that the system keeps for a user and for all users.
// Any thread, while nobody sets the environment or the hook.

#include <string>

namespace platform {

/// The numbers are those by which the system knows the folders.
enum class KnownFolder : int {
  documents = 5,         ///< the user's documents
  appData = 26,          ///< the user's application data
  commonAppData = 35,    ///< application data of all users
  profile = 40,          ///< the user's own directory
  commonDocuments = 46,  ///< documents of all users
};

/// The folder's path in the "\" form, empty if the system has none. It need not exist.
std::u16string knownFolderPath(KnownFolder folder);

/// Replaces the system's answer.
extern std::u16string (*knownFolderHook)(KnownFolder folder);

}  // namespace platform
