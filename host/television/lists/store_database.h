/** The database file of the store: its tables, and how it is opened. */
#pragma once

#include <string>

#include "television/base/sqlite.h"

namespace television {

/** `openStoreDatabase` with this path opens a database that is in memory only. */
constexpr char kMemoryPath[] = ":memory:";

// The queries that read the tables. Opening the database checks that their columns exist.
constexpr char kReadRecords[] =
        "SELECT kind, list, record, lcn, own, image FROM records ORDER BY kind, list, record";
constexpr char kReadIdentities[] = "SELECT kind, list, a, b, c, record, hidden FROM identities";
constexpr char kReadFavourites[] =
        "SELECT list, favourite, channel FROM favourites ORDER BY list, favourite, place";
constexpr char kReadSettings[] = "SELECT name, value FROM settings";
constexpr char kReadNamed[] = "SELECT name, value FROM named";

// The names of settings, which are numbers.
constexpr int kSettingCurrent = 100;      ///< plus the window: channel that is selected there
constexpr int kSettingPrevious = 102;     ///< plus the window: channel that was selected before
constexpr int kSettingSource = 104;       ///< input source that the main window shows
constexpr int kSettingPumpVersion = 200;  ///< plus the id of a list: its pump version

/**
 * Opens the database with the file `path`, which is made when missing. A database that is damaged,
 * or of another version of the television, is moved aside to `path` + ".damaged", and a new one is
 * made; the log says so. Throws SqliteError when there is no database then.
 */
SqliteDatabase openStoreDatabase(const std::string& path);

}  // namespace television
