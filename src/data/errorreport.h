#pragma once
// The one error reporter. It turns database errors into short messages, shows other run-time errors,
// can hand an error to the bug-report window, and appends every report to "errors.log".
#include "core/vberror.h"
#include "data/database.h"

#include <QString>
#include <functional>

void ReportDBError(const VbError& error, const QString& procedure, const QString& container);
// Catches anything else thrown (a std::exception) as run-time error 5 with its message.
void ReportDBError(const std::exception& error, const QString& procedure, const QString& container);

// The window layer installs the way to open the bug-report window (description, error number).
void setBugReportOpener(std::function<void(const QString& description, const QString& number)> opener);

// The lines the editors' save handlers compose from the connection's error records.
QString DescribeErrorRecords();

// The situations the reporter tells apart, read from one error record (SQLite's codes and the
// schema's constraint names TOO_LARGE_..., EMPTY_..., INVALID_...). InUse: a lookup value that a
// record still uses (the schema's triggers) or a foreign key that refuses.
enum class DBErrorKind { Other, TooLarge, Empty, Duplicate, Invalid, InUse };
DBErrorKind classifyError(const ErrorRecord& record);
