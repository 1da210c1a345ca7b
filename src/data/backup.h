#pragma once
// Backup and restore of the database file. A backup is a consistent copy taken through SQLite's
// online backup while the connection stays open. A restore checks the chosen file first, keeps a
// safety copy, and puts the new file in place with one rename, so that at every moment (a crash, a
// kill, a power cut) either the old or the new database is "data.vosk", never neither.
#include <QDate>
#include <QString>
#include <functional>

// Writes a copy of the open database to targetPath (an empty path does nothing). An existing file
// there is replaced only once the copy is complete. Errors are reported under "BackUpDB".
bool BackUpDB(const QString& targetPath);

// Replaces the database with the file at sourcePath and reopens the connection with the same
// connection text. A missing file gets "Invalid Filename!"; a file that is not a restorable database
// is refused with a message that names it and says nothing was changed. When the restored file
// cannot be opened, the safety copy is put back and the user is told. Errors are reported under
// "RestoreDB". True when the new database is open.
bool RestoreDB(const QString& sourcePath);

// Why the file cannot be restored, or an empty text when it is a VOSK database of the version this
// program reads, with every table and column, that passes SQLite's integrity check. The file is
// opened read-only and never changed.
QString CheckRestorable(const QString& path);

// Removes what a restore that was stopped half-way (a crash, a kill) left beside the database at target:
// the incoming copy and the partial copies always, the safety copy of the previous database only when
// the database itself is whole (otherwise the safety copy may be all the player has). Start-up calls
// it once the program knows it is the only instance.
void CleanRestoreLeftovers(const QString& target);

// The name the backup dialog proposes: the day as "ddmmyyyy" and ".bak".
QString ProposedBackupName(const QDate& day);

// The File menu's two commands with their dialogs (through the prompt service). Backup: the save
// dialog with the proposed name and "Backup Files|*.bak", a question before replacing an existing
// file (No shows the dialog again), cancel ends quietly. Restore: the open dialog with the same
// filter, then RestoreDB. True when a backup was written / a database was restored.
bool BackupDatabaseCommand();
bool RestoreDatabaseCommand();

// Copies a file so that "to" is either untouched or the whole copy: written under a temporary name
// in the same folder, flushed to disk, then renamed over "to". False with the reason in *error.
bool CopyFileAtomically(const QString& from, const QString& to, QString* error);
// Renames "from" over "to" (replacing it) and flushes the folder, so the rename survives a power cut.
bool ReplaceFile(const QString& from, const QString& to, QString* error);
// Flushes a file's contents to disk.
bool SyncFile(const QString& path, QString* error);

// How a restore copies the chosen file into place (CopyFileAtomically unless a test says otherwise);
// an empty function restores the default.
void setRestoreCopier(std::function<bool(const QString& from, const QString& to, QString* error)> copier);
