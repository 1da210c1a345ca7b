#pragma once
// The one error reporter. It turns database errors into short messages, shows other run-time errors,
// can hand an error to the bug-report window, and appends every report to "errors.log".
#include "core/vberror.h"

#include <QString>
#include <functional>

void ReportDBError(const VbError& error, const QString& procedure, const QString& container);
// Catches anything else thrown (a std::exception) as run-time error 5 with its message.
void ReportDBError(const std::exception& error, const QString& procedure, const QString& container);

// The window layer installs the way to open the bug-report window (description, error number).
void setBugReportOpener(std::function<void(const QString& description, const QString& number)> opener);

// The lines the editors' save handlers compose from the connection's error records.
QString DescribeErrorRecords();
