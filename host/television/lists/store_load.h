/** Reads what the store's database remembers. */
#pragma once

#include <map>
#include <string>

#include "television/base/sqlite.h"
#include "television/lists/identities.h"
#include "television/lists/lists.h"

namespace television {

/** Reads all lists and identities. Rows that make no sense are left out. `lists` and `identities`
 * must be empty. Throws SqliteError. */
void loadLists(sqlite3* database, ChannelLists& lists, Identities& identities);

/** Reads the values that are kept by name. Throws SqliteError. */
std::map<std::string, std::string> loadValues(sqlite3* database);

}  // namespace television
