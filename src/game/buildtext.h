#pragma once
// The build tree as indented text for the captain's log: what an equipment is upgraded from and made
// of, level by level. Each line is "." (so that the profile reader keeps the indentation), four
// blanks for every level (depth + 1 times), "Lvl ", the level, a blank, the name and " (amount)" when
// more than one is needed.
#include <QString>

namespace buildtext {
inline const QString Equipment = QStringLiteral("EQUIPMENT");
inline const QString Components = QStringLiteral("COMPONENTS");
inline const QString RawMaterials = QStringLiteral("RAW MATERIALS");
inline const QString NoRecords = QStringLiteral("No Records Found");
} // namespace buildtext

// The four writers share one stop: a recipe that contains itself ends, once the text is deeper than
// the build view's bound, with run-time error 28; the error is logged, and every writer then returns
// the text it had built, so the answer holds everything up to that point. Any other error (the
// database) ends the text the same way. Errors are logged under the writer's name in errors.log; no
// message box is shown.
class BuildTextWriter {
public:
    // parentKind is one of the kinds above. With check set, the names found are returned run together
    // without layout, or "No Records Found" when there are none; without it, an empty text.
    QString GetEquip(const QString& name, int depth, const QString& parentKind, bool check = false);
    QString GetComps(const QString& name, int depth, const QString& parentKind, bool check = false);
    QString GetRawMat(const QString& name, int depth, const QString& parentKind, bool check = false);
    QString GetItems(const QString& name, int depth, const QString& parentKind, bool check = false);

    // True when the last text was cut short by an error.
    bool stopped() const { return m_stopped; }

private:
    enum class Writer { Equip, Comps, RawMat, Items };
    QString write(Writer which, const QString& name, int depth, const QString& parentKind, bool check);
    bool m_stopped = false;
};

// Appends "Error n (description) in procedure P of Class Module clsVLInterface date" to errors.log,
// the line the error reporter writes, without its message box: the channel must never stop the
// player's window. The connection's error records are cleared.
void LogChannelError(const std::exception& error, const QString& procedure);
