#pragma once
// A run-time error as the program's error handlers see it: a number and a description. Procedures
// throw it (or let the data layer throw it) and catch it in their own handler, which hands it to
// ReportDBError with the procedure's name and container.
#include <QString>
#include <stdexcept>

struct VbError : std::runtime_error {
    VbError(long errorNumber, const QString& errorText)
        : std::runtime_error(errorText.toStdString()), number(errorNumber), description(errorText) {}
    long number;
    QString description;
};

// Run-time error numbers the program raises itself.
namespace vberr {
constexpr long InvalidCall = 5; // invalid procedure call or argument
constexpr long OutOfStackSpace = 28;
constexpr long FileNotFound = 53;
constexpr long PermissionDenied = 70;
constexpr long PathNotFound = 76;
constexpr long InvalidUseOfNull = 94;
constexpr long ObjectRequired = 424;
constexpr long NoCurrentRecord = 3021; // reading where there is no current row
constexpr long ItemNotFound = 3265;    // no field of that name or position
constexpr long ObjectClosed = 3704;    // a result set used while closed
constexpr long CancelError = 32755;    // a common dialog cancelled where cancelling is an error
} // namespace vberr
