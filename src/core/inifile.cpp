#include "core/inifile.h"
#include "core/programfolder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QStringEncoder>
#include <memory>

namespace {
// Windows-1252 bytes 0x80 to 0x9F; the undefined ones stand for the control character of their number.
constexpr char16_t HighHalf[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char encodeOne(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return char(c);
    for (int i = 0; i < 32; ++i)
        if (HighHalf[i] == c)
            return char(0x80 + i);
    return '?';
}

QString fold(const QString& name) {
    return name.trimmed().toCaseFolded();
}

// A line's key: the text before the first "=", trimmed; a line without "=" has none.
bool keyOf(const QString& line, QString* key) {
    const qsizetype eq = line.indexOf(QLatin1Char('='));
    if (eq < 0)
        return false;
    *key = line.left(eq).trimmed();
    return true;
}

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

QString readValue(const QString& line, int bufferSize) {
    QString v = line.mid(line.indexOf(QLatin1Char('=')) + 1);
    const qsizetype nul = v.indexOf(QChar(0));
    if (nul >= 0)
        v.truncate(nul);
    qsizetype b = 0, e = v.size();
    while (b < e && isBlank(v.at(b)))
        ++b;
    while (e > b && isBlank(v.at(e - 1)))
        --e;
    v = v.mid(b, e - b);
    if (v.size() >= 2 && (v.front() == QLatin1Char('"') || v.front() == QLatin1Char('\'')) &&
        v.back() == v.front())
        v = v.mid(1, v.size() - 2);
    if (bufferSize > 0 && v.size() > bufferSize - 1)
        v.truncate(bufferSize - 1);
    return v;
}

// A value is one line of the file: line breaks inside it would start lines of their own.
QString oneLine(QString value) {
    value.replace(QLatin1Char('\r'), QLatin1Char(' '));
    value.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return value;
}

bool readOnly(const QString& file) {
    return QFileInfo::exists(file) && !(QFile::permissions(file) & QFileDevice::WriteOwner);
}
} // namespace

namespace profile {

QString decode(QByteArrayView bytes) {
    QString out(bytes.size(), Qt::Uninitialized);
    QChar* d = out.data();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        d[i] = QChar(b >= 0x80 && b < 0xA0 ? HighHalf[b - 0x80] : char16_t(b));
    }
    return out;
}

QByteArray encode(QStringView text) {
    QByteArray out;
    out.reserve(text.size());
    for (char32_t c : text.toUcs4())
        out.append(encodeOne(c));
    return out;
}

QString windowsFolder() {
#ifdef Q_OS_WIN
    QString dir = qEnvironmentVariable("WINDIR");
    if (dir.isEmpty())
        dir = qEnvironmentVariable("SystemRoot", QStringLiteral("C:/Windows"));
    return QDir::fromNativeSeparators(dir);
#else
    QString prefix = qEnvironmentVariable("WINEPREFIX");
    if (prefix.isEmpty())
        prefix = QDir::homePath() + QStringLiteral("/.wine");
    return QDir::cleanPath(prefix + QStringLiteral("/drive_c/windows"));
#endif
}

QString resolve(const QString& file) {
    return QDir::isAbsolutePath(file) ? file : windowsFolder() + QLatin1Char('/') + file;
}

} // namespace profile

ProfileFile::ProfileFile(const QString& file) : m_file(profile::resolve(file)) {
    QFile f(m_file);
    if (!f.open(QIODevice::ReadOnly))
        return;
    m_existed = true;
    const QByteArray raw = f.readAll();
    QString text;
    if (raw.startsWith("\xEF\xBB\xBF")) {
        m_encoding = Encoding::Utf8Bom;
        text = QString::fromUtf8(QByteArrayView(raw).sliced(3));
    } else if (raw.startsWith("\xFF\xFE")) {
        m_encoding = Encoding::Utf16Bom;
        QStringDecoder toText(QStringDecoder::Utf16LE);
        text = toText(QByteArrayView(raw).sliced(2));
    } else {
        text = profile::decode(raw);
    }
    parse(text);
}

void ProfileFile::parse(const QString& text) {
    QStringList* target = &m_preamble;
    qsizetype start = 0;
    const qsizetype n = text.size();
    while (start < n) {
        qsizetype end = start;
        while (end < n && text.at(end) != QLatin1Char('\n') && text.at(end) != QLatin1Char('\r'))
            ++end;
        const QString line = text.mid(start, end - start);
        // CR LF, a lone LF or a lone CR ends a line.
        start = end + 1;
        if (end + 1 < n && text.at(end) == QLatin1Char('\r') && text.at(end + 1) == QLatin1Char('\n'))
            ++start;

        qsizetype first = 0;
        while (first < line.size() && isBlank(line.at(first)))
            ++first;
        if (first < line.size() && line.at(first) == QLatin1Char('[')) {
            const qsizetype close = line.indexOf(QLatin1Char(']'), first);
            const QString name =
                (close < 0 ? line.mid(first + 1) : line.mid(first + 1, close - first - 1)).trimmed();
            m_sections.push_back({name, {line}});
            target = &m_sections.back().lines;
            continue;
        }
        target->append(line);
    }
    // The first section of a name is the one that counts.
    m_index.clear();
    for (int i = int(m_sections.size()) - 1; i >= 0; --i)
        m_index.insert(fold(m_sections[size_t(i)].name), i);
}

int ProfileFile::findSection(const QString& name) const {
    return m_index.value(fold(name), -1);
}

int ProfileFile::findKey(const Section& s, const QString& key) {
    const QString wanted = key.trimmed();
    QString k;
    for (int i = 1; i < s.lines.size(); ++i)
        if (keyOf(s.lines.at(i), &k) && k.compare(wanted, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QString ProfileFile::value(const QString& section, const QString& key, const QString& defaultValue,
                           int bufferSize) const {
    const int s = findSection(section);
    if (s < 0)
        return defaultValue;
    const Section& sec = m_sections[size_t(s)];
    const int k = findKey(sec, key);
    return k < 0 ? defaultValue : readValue(sec.lines.at(k), bufferSize);
}

void ProfileFile::setValue(const QString& section, const QString& key, const QString& value) {
    const QString line = key.trimmed() + QLatin1Char('=') + oneLine(value);
    const int s = findSection(section);
    if (s < 0) {
        m_sections.push_back(
            {section.trimmed(), {QLatin1Char('[') + section.trimmed() + QLatin1Char(']'), line}});
        m_index.insert(fold(section), int(m_sections.size() - 1));
        return;
    }
    Section& sec = m_sections[size_t(s)];
    const int k = findKey(sec, key);
    if (k >= 0) {
        sec.lines[k] = line;
        return;
    }
    // After the section's last written line, so that the blank lines that part it from the next
    // section stay where they are.
    int at = int(sec.lines.size());
    while (at > 1 && sec.lines.at(at - 1).trimmed().isEmpty())
        --at;
    sec.lines.insert(at, line);
}

QByteArray ProfileFile::bytes() const {
    QString text;
    auto add = [&text](const QStringList& lines) {
        for (const QString& l : lines) {
            text += l;
            text += QLatin1String("\r\n");
        }
    };
    add(m_preamble);
    for (const Section& s : m_sections)
        add(s.lines);
    switch (m_encoding) {
    case Encoding::Utf8Bom:
        return QByteArray("\xEF\xBB\xBF") + text.toUtf8();
    case Encoding::Utf16Bom: {
        QStringEncoder toBytes(QStringEncoder::Utf16LE);
        return QByteArray("\xFF\xFE") + QByteArray(toBytes(text));
    }
    case Encoding::Windows1252:
        break;
    }
    return profile::encode(text);
}

bool ProfileFile::save() const {
    if (readOnly(m_file))
        return false;
    // Rewritten in place and not forced to the disk, as the profile functions do: the channel writes
    // dozens of pages for one answer, and a sync for each would keep the player waiting.
    QFile out(m_file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray data = bytes();
    return out.write(data) == data.size() && out.flush();
}

QString ReadProfileString(const QString& file, const QString& section, const QString& key,
                          const QString& defaultValue, int bufferSize) {
    return ProfileFile(file).value(section, key, defaultValue, bufferSize);
}

namespace {
struct Cached {
    QDateTime modified;
    qint64 size = -1;
    std::shared_ptr<const ProfileFile> file;
};

QHash<QString, Cached>& cache() {
    static QHash<QString, Cached> c;
    return c;
}

// Tooltips are read many times while windows open; the parsed file is kept until it changes.
std::shared_ptr<const ProfileFile> parsed(const QString& file) {
    const QFileInfo info(profile::resolve(file));
    Cached& c = cache()[info.absoluteFilePath()];
    if (!c.file || c.size != info.size() || c.modified != info.lastModified()) {
        c.size = info.size();
        c.modified = info.lastModified();
        c.file = std::make_shared<const ProfileFile>(info.absoluteFilePath());
    }
    return c.file;
}
} // namespace

QString ReadIni(const QString& file, const QString& section, const QString& key,
                const QString& defaultValue) {
    return parsed(file)->value(section, key, defaultValue);
}

bool WriteIni(const QString& file, const QString& section, const QString& key, const QString& value) {
    ProfileFile f(file);
    f.setValue(section, key, value);
    const bool written = f.save();
    cache().remove(QFileInfo(f.fileName()).absoluteFilePath());
    return written;
}

QString ReadVoskIni(const QString& section, const QString& key, const QString& defaultValue) {
    return ReadIni(iniPath(), section, key, defaultValue);
}
