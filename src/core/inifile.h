#pragma once
// Profile (INI) files read and written the way the Windows private-profile functions do it, for the
// program's own "VOSK.ini" and for the game's captain's-log pages:
// - sections and keys compare without regard to case; the first of two equal sections or keys wins;
// - a value is the rest of the line after the first "=", with surrounding blanks and one enclosing
//   pair of matching quotes (' or ") removed, cut at a NUL; nothing else in it is interpreted;
// - a write replaces or adds one key and keeps every other section, key and unknown line; it writes
//   CR LF line ends and Windows-1252 text (characters it cannot hold become "?"); a file that
//   starts with a UTF-8 or UTF-16 byte-order mark is read and written back in that form;
// - a read-only file (the owner may not write it) or a missing folder is not written: the write
//   returns false and leaves the file as it was;
// - a relative file name means a file in the Windows folder (see windowsFolder()).
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace profile {
// Windows-1252 bytes to text; the five bytes the code page leaves undefined read as the control
// characters of the same number, as Windows reads them.
QString decode(QByteArrayView bytes);
// Text to Windows-1252; anything the code page cannot hold becomes "?".
QByteArray encode(QStringView text);
// The Windows folder, against which a bare file name is resolved: %WINDIR% on Windows; elsewhere the
// folder Wine shows as C:\windows, "$WINEPREFIX/drive_c/windows" (WINEPREFIX defaults to ~/.wine).
QString windowsFolder();
// The file a profile name stands for: an absolute name as it is, a relative one in windowsFolder().
QString resolve(const QString& file);
// The buffer of a value read for the captain's log: longer values come back cut to one less.
constexpr int CapLogBuffer = 512;
} // namespace profile

// One profile file in memory: read once, changed by any number of writes, saved once. A sequence of
// setValue() calls followed by save() leaves the same file as the same writes made one by one.
class ProfileFile {
public:
    // Reads the file now; a missing or unreadable file reads as empty.
    explicit ProfileFile(const QString& file);

    QString fileName() const { return m_file; }
    bool existed() const { return m_existed; }

    // bufferSize > 0 cuts the value to bufferSize - 1 characters, as a fixed reading buffer does.
    QString value(const QString& section, const QString& key, const QString& defaultValue = QString(),
                  int bufferSize = 0) const;
    void setValue(const QString& section, const QString& key, const QString& value);
    // Writes the file back; false when it is read-only or cannot be written.
    bool save() const;
    // The file as save() would write it.
    QByteArray bytes() const;

private:
    struct Section {
        QString name;      // as written between the brackets, trimmed
        QStringList lines; // the header line first, then every line up to the next section
    };
    enum class Encoding { Windows1252, Utf8Bom, Utf16Bom };
    void parse(const QString& text);
    int findSection(const QString& name) const;
    static int findKey(const Section& s, const QString& key);

    QString m_file;
    bool m_existed = false;
    Encoding m_encoding = Encoding::Windows1252;
    QStringList m_preamble; // lines before the first section
    std::vector<Section> m_sections;
    QHash<QString, int> m_index; // case-folded name -> first section of that name
};

// One value read from a file, fresh from the disk each time (bufferSize as ProfileFile::value).
QString ReadProfileString(const QString& file, const QString& section, const QString& key,
                          const QString& defaultValue = QString(), int bufferSize = 0);

// One value of a file that is read many times (tooltips): kept parsed until the file changes.
QString ReadIni(const QString& file, const QString& section, const QString& key,
                const QString& defaultValue = QString());
// Writes or replaces one key, creating the section or file when missing. False when it cannot write.
bool WriteIni(const QString& file, const QString& section, const QString& key, const QString& value);

// The same on "VOSK.ini" in the program folder.
QString ReadVoskIni(const QString& section, const QString& key, const QString& defaultValue = QString());
