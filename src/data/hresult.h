#pragma once
// The provider's error numbers (HRESULTs) that the error records carry, as the error reporter and
// the program's handlers compare them.
namespace hr {
constexpr long Fail = -2147467259;               // 0x80004005, any engine failure
constexpr long MissingValue = -2147217904;       // 0x80040E10, no value for a name or parameter the
                                                 // engine cannot resolve; a value of the wrong kind
constexpr long PermissionDenied = -2147217911;   // 0x80040E09, a result set or field cannot be written
constexpr long CantFetchBackwards = -2147217884; // 0x80040E24, a forward-only result set moved back
} // namespace hr
