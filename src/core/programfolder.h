#pragma once
// The program folder holds data.vosk, VOSK.ini and errors.log. It is the executable's folder unless
// the environment variable VOSK_HOME or the command-line option --folder names another one.
#include <QString>

QString programFolder();
void setProgramFolder(const QString& folder);
// Reads --folder <dir> (or --folder=<dir>) from the arguments, else VOSK_HOME, else the executable's folder.
void initProgramFolder(const QStringList& arguments);

// The database path: folder, the platform's separator, "data.vosk".
QString databasePath();
QString iniPath();      // "VOSK.ini" in the program folder
QString errorLogPath(); // program folder + "/errors.log"
