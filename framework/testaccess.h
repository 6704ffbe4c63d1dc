// What happens once in the life of the process, undone for tests. Never part of the product.
#pragma once

namespace testaccess {

// Closes the class log; the next broker reads the environment variable again.
void resetBrokerLog();

// The number of duplicate classes seen starts at 0 again.
void resetDuplicateCount();

}  // namespace testaccess
