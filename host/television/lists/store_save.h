/** Writes what changed into the store's database. */
#pragma once

#include <map>
#include <string>

#include "television/base/sqlite.h"
#include "television/lists/dirty_parts.h"
#include "television/lists/identities.h"
#include "television/lists/lists.h"

namespace television {

// To be called within a transaction. They throw SqliteError.

/** Writes the parts of `lists` that `dirty` names, and always the settings. */
void saveLists(sqlite3* database, const ChannelLists& lists, const DirtyParts& dirty);

void saveIdentities(sqlite3* database, const std::map<IdentityKey, Identity>& identities);

/** Writes values by name; an empty value deletes its name. */
void saveValues(sqlite3* database, const std::map<std::string, std::string>& values);

}  // namespace television
