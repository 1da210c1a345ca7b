#pragma once
// The per-user settings store (application "VOSK"): get, save and delete a setting by section and
// key. Every option with its default is in one table.
#include <QString>
#include <QVariant>

QString GetSetting(const QString& section, const QString& key, const QString& defaultValue = QString());
void SaveSetting(const QString& section, const QString& key, const QString& value);
void DeleteSetting(const QString& section, const QString& key = QString());
// Removes the whole branch of the program; false when the store could not be written.
bool DeleteAllSettings();

namespace opt {
// The options of section "Options" with their defaults. Booleans are kept as "True" and "False".
struct Option {
    const char* key;
    const char* defaultValue;
};
inline constexpr Option Tooltips{"Tooltips", "True"};
inline constexpr Option ReportErrorMessages{"ReportErrorMessages", "False"};
inline constexpr Option DoubleClickEvent{"DoubleClickEvent", "0"};
inline constexpr Option DisplayVLNCursor{"DisplayVLNCursor", "True"};
inline constexpr Option VLInteractOn{"VLInteractOn", "False"};
inline constexpr Option VLPath{"VLPath", ""};
inline constexpr Option PreloadImages{"PreloadImages", "False"};
inline constexpr Option PrintPreview{"PrintPreview", "False"};
inline constexpr Option Background{"Background", "True"};
inline constexpr Option Markup{"Markup", "1"};

QString text(const Option& o);
bool flag(const Option& o);
long number(const Option& o);
void save(const Option& o, const QString& value);
void saveFlag(const Option& o, bool value);
} // namespace opt

// "True"/"False" as the store keeps them; anything else reads false.
inline QString boolText(bool b) {
    return b ? QStringLiteral("True") : QStringLiteral("False");
}
bool textBool(const QString& s);
