#pragma once
// The database layout: every table and column of a version-6 database, and the creation of a new,
// empty database file with them. Column types are declared so that the program can read back each
// field's kind (see fieldkind.h): INTEGER, SMALLINT, FLOAT, DOUBLE, CURRENCY, VARCHAR(n), TEXT,
// BOOLEAN, DATETIME.
//
// Constraint failures carry names that tell the error reporter which situation it is:
//   TOO_LARGE_<table>_<column>  text longer than its size, number outside its 16/32-bit range
//   EMPTY_<table>_<column>      a name or lookup value that is '' (NOT NULL covers a missing one)
//   INVALID_<table>_<column>    a number column given text, a yes/no column given other than 0/1;
//                               a name column given two single quotes in a row (which FixQuotes
//                               would take as quoted already), a blob, or bytes that are not UTF-8
// Every text column compares with the collation VOSK_NOCASE (sqlfunctions.h), so a database file is
// written only through connections that registered it. Names and lookup values are unique without
// regard to case in that sense (a UNIQUE failure: duplicate record).
// A lookup value that a record uses cannot be deleted or renamed: a trigger aborts with
// "<LOOKUP> value is in use by <TABLE>".
#include <QList>
#include <QString>
#include <QStringList>

struct sqlite3;

namespace schema {

constexpr int Version = 6;

struct Column {
    QString name;
    QString type;           // the declared type: "INTEGER", "VARCHAR(100)", "BOOLEAN", ...
    bool required = false;  // NOT NULL, never '' (record names, lookup values)
    bool holdsName = false; // a record name or lookup value: a name the program puts into SQL literals
};

struct Table {
    QString name;
    QList<Column> columns;
    QStringList unique;   // columns that are unique together (empty: none)
    bool lookup = false;  // a drop-down list table
    bool ordered = false; // read in the order its rows were written (no sorting index used)
};

// Every table, in creation order.
const QList<Table>& tables();
const Table* findTable(const QString& name); // case-insensitive; nullptr when there is none
QStringList tableNames();

// Text size of a VARCHAR(n) column; 0 for any other type.
int textSize(const QString& declaredType);

// Lookup tables and the record columns that hold their values; those values cannot be deleted or
// renamed while in use.
struct LookupUse {
    QString lookupTable, lookupColumn;
    QString usingTable, usingColumn;
    // A second column pair that must match too (a subtype is in use only under its own type).
    QString lookupPartner, usingPartner;
};
const QList<LookupUse>& lookupUses();

// Name sizes shared by all tables.
constexpr int NameSize = 100;   // record names and the relationship columns that hold them
constexpr int LookupSize = 50;  // lookup values and the columns that hold them
constexpr int CustomSize = 255; // the three custom equipment fields

// Registers the SQL functions (sqlfunctions.h) on the connection, runs the DDL on it (open, empty)
// and writes the version row and the one options row.
// Returns false with a message in *error when a statement fails.
bool CreateSchema(sqlite3* db, QString* error = nullptr);

// Columns added to the version-6 tables later, without a new version number. A new database has
// them; an older version-6 file is given them when it is opened (EnsureAddedColumns), so that any
// version-6 file keeps working with any program. They are not part of tables(), the layout every
// version-6 file has, so that a backup made before them still restores.
//   COMPONENTS.COST_TO_MANUFACTURE (a whole number, NULL when unknown): the component's
//   manufacturing fee, which the component editor writes when it updates a component.
struct AddedColumn {
    QString table;
    Column column;
};
const QList<AddedColumn>& addedColumns();
// Adds the added columns that a version-6 database lacks (a file of another version, or one without
// the table, is left alone). False with a message in *error when one cannot be added (a read-only
// file, for instance). Runs no statement when nothing is missing.
bool EnsureAddedColumns(sqlite3* db, QString* error = nullptr);
// Tables added to the version-6 layout later, without a new version number: a database is given them
// when they are missing (EnsureAddedTables), so that any version-6 file keeps working with any
// program. They are not part of tables(), which is the version-6 layout itself.
//   OWNED_QUANTITIES (RECORD_KIND, RECORD_NAME, QUANTITY): how many of a record the player has, for
//   the shopping list. RECORD_KIND is the main list's category word ("Equipment", "Components",
//   "Raw Materials", "Items"); one row per record, names unique within a kind without regard to case.
const QList<Table>& addedTables();
inline const QString OwnedTable = QStringLiteral("OWNED_QUANTITIES");
// Creates the added tables that the database lacks (with the same constraint names as the others).
// False with a message in *error when one cannot be made (a read-only file, for instance).
bool EnsureAddedTables(sqlite3* db, QString* error = nullptr);
// Indexes added later: LVL of the four levelled tables, so that the main window's level list (the
// highest level in use) and the level filter do not read every row of a large table. A new database
// has them; EnsureAddedIndexes gives them to a version-6 file that lacks them (once: on a table of a
// million rows that takes a moment). False with a message in *error when one cannot be made.
QStringList addedIndexDdl();
bool EnsureAddedIndexes(sqlite3* db, QString* error = nullptr);

} // namespace schema

// Creates a new, empty version-6 database file at path. Refuses to overwrite an existing file.
// Returns false with a message in *error (and leaves no file behind) on failure.
bool CreateDatabase(const QString& path, QString* error = nullptr);
