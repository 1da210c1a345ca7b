#include "views/modmain.h"

#include "core/inifile.h"
#include "core/settings.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "lists/cellformat.h"

#include <QLocale>
#include <cmath>

namespace {
// Numbers in their shortest form, without an exponent for ordinary values.
QString numberText(double v) {
    if (v == std::floor(v) && std::fabs(v) < 1e15)
        return QString::number(qint64(v));
    return QString::number(v, 'g', 15);
}

// A value read as a number; a text that is no number is a type mismatch.
double toNumber(const QVariant& v) {
    bool ok = false;
    double d = 0;
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? -1 : 0;
    if (v.typeId() == QMetaType::QString) {
        QString s = v.toString().trimmed();
        s.remove(QLatin1Char(','));
        d = s.toDouble(&ok);
    } else {
        d = v.toDouble(&ok);
    }
    if (!ok)
        throw VbError(13, QStringLiteral("Type mismatch"));
    return d;
}
} // namespace

QString ProperCase(const QString& text) {
    QString out = text;
    bool startOfWord = true;
    for (QChar& c : out) {
        if (c.isSpace() || c == QChar(0)) {
            startOfWord = true;
            continue;
        }
        c = startOfWord ? c.toUpper() : c.toLower();
        startOfWord = false;
    }
    return out;
}

QString FormatFieldName(const QString& columnName) {
    QString name = columnName;
    if (name == QLatin1String("AMO_TYPE_AMO"))
        name = QStringLiteral("AMO_TYPE");
    else if (name == QLatin1String("UNIQUE_FLAG"))
        name = QStringLiteral("UNIQUE");
    else if (name == QLatin1String("CUSTOM_01"))
        name = customFields().caption[0];
    else if (name == QLatin1String("CUSTOM_02"))
        name = customFields().caption[1];
    else if (name == QLatin1String("CUSTOM_03"))
        name = customFields().caption[2];

    if (name.contains(QLatin1String("AMO")) && name != QLatin1String("AMOUNT"))
        name.replace(QLatin1String("AMO"), QLatin1String("Ammunition_"));

    if (!name.contains(QLatin1Char('_')))
        return name == QLatin1String("LVL") ? QStringLiteral("Level") : ProperCase(name);
    name.replace(QLatin1Char('_'), QLatin1Char(' '));
    return ProperCase(name);
}

QString GetToolTip(const QString& section, const QString& key, const QString& name) {
    QString tip = ReadVoskIni(section, key);
    if (tip.contains(QLatin1String("###")))
        tip.replace(QLatin1String("###"), QString(name).remove(QLatin1Char('_')));
    if (tip.contains(QLatin1String("%%%"))) {
        bool ok = false;
        const double markup = opt::text(opt::Markup).trimmed().toDouble(&ok);
        tip.replace(QLatin1String("%%%"), RoundText(((ok ? markup : 1.0) - 1.0) * 100.0) + QLatin1Char('%'));
    }
    tip.replace(QLatin1String("\\n"), QLatin1String("\r\n"));
    return tip;
}

QString FormatWhole(qint64 value) {
    QString digits = QString::number(value < 0 ? -value : value);
    for (int i = int(digits.size()) - 3; i > 0; i -= 3)
        digits.insert(i, QLatin1Char(','));
    return value < 0 ? QLatin1Char('-') + digits : digits;
}

QString PriceText(const QString& value, bool manufactureFee) {
    QString plain = value.trimmed();
    plain.remove(QLatin1Char(','));
    bool ok = false;
    const double number = plain.toDouble(&ok);
    if (!ok)
        return value;
    const QString word = PriceWord(number, manufactureFee);
    return word.isEmpty() ? value : word;
}

QString RemoveExtra(const QString& nodeText) {
    if (nodeText.indexOf(QLatin1Char('('), 1) >= 0) {
        // The blank before the bracket goes with it.
        const int last = int(nodeText.lastIndexOf(QLatin1Char('(')));
        return nodeText.left(last - 1);
    }
    const int amount = int(nodeText.indexOf(QLatin1String(" [Amt: ")));
    if (amount >= 0)
        return nodeText.left(amount);
    return nodeText;
}

QString NzString(const QVariant& v, const QString& defaultValue) {
    if (v.isNull())
        return defaultValue;
    if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float)
        return numberText(v.toDouble());
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    return v.toString();
}

bool NzBool(const QVariant& v, bool defaultValue) {
    if (v.isNull())
        return defaultValue;
    if (v.typeId() == QMetaType::Bool)
        return v.toBool();
    if (v.typeId() == QMetaType::QString) {
        const QString s = v.toString().trimmed();
        if (s.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ||
            s.compare(QLatin1String("Yes"), Qt::CaseInsensitive) == 0)
            return true;
        if (s.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0 ||
            s.compare(QLatin1String("No"), Qt::CaseInsensitive) == 0)
            return false;
    }
    return toNumber(v) != 0;
}

qint32 NzLong(const QVariant& v, qint32 defaultValue) {
    if (v.isNull())
        return defaultValue;
    const double d = toNumber(v);
    if (d > 2147483647.0 || d < -2147483648.0)
        throw VbError(6, QStringLiteral("Overflow"));
    return qint32(std::llround(d));
}

double NzDouble(const QVariant& v, double defaultValue) {
    if (v.isNull())
        return defaultValue;
    return toNumber(v);
}

QString RoundText(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    // A hair towards the larger magnitude, so that 12.345 (stored as 12.34499...) rounds as written.
    const double nudge = value >= 0 ? 1e-9 : -1e-9;
    const double rounded = std::round(value * scale + nudge) / scale;
    return numberText(rounded == 0 ? 0.0 : rounded);
}

QString SpecialText(const QString& special, const QVariant& amount, const QString& units) {
    QString text = special;
    const double a = NzDouble(amount);
    if (a < 0)
        text += QLatin1Char(' ') + RoundText(a);
    else if (a > 0)
        text += QLatin1String(" +") + RoundText(a);
    if (a != 0) {
        if (units == QLatin1String("%"))
            text += QLatin1Char('%');
        else
            text += QLatin1Char(' ') + ProperCase(units);
    }
    return text;
}

QString SpecialDetailText(const QString& column, const QVariant& value) {
    if (value.isNull() || NzDouble(value) <= 0)
        return QString();
    return FormatFieldName(column) + QLatin1String(": ") + NzString(value);
}

QStringList PopulateList(Recordset& rs) {
    QStringList list;
    for (; !rs.eof(); rs.moveNext())
        list.append(NzString(rs.value(0)));
    return list;
}

void PopulateList(ListSink& list, Recordset& rs) {
    for (; !rs.eof(); rs.moveNext())
        list.addItem(NzString(rs.value(0)));
}

bool IsRefined(const QString& rawMaterialName) {
    try {
        const QString name = FixQuotes(rawMaterialName);
        {
            Recordset rs;
            rs.open("SELECT REFINES_FROM FROM RAW_MATERIALS_REFINES_FROM WHERE RAW_MATERIAL_NAME = '" + name +
                    "' ORDER BY REFINES_FROM");
            if (!rs.eof())
                return true;
        }
        Recordset rs;
        rs.open("SELECT ITEM_NAME FROM RAW_MATERIALS_ITEMS WHERE RAW_MATERIAL_NAME = '" + name +
                "' ORDER BY ITEM_NAME");
        return !rs.eof();
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("IsRefined"), QStringLiteral("Module modMain"));
    }
    return false;
}

namespace {
CustomFields g_custom;
bool g_customLoaded = false;
} // namespace

void reloadCustomFields() {
    g_customLoaded = true;
    g_custom = CustomFields{};
    if (!db().isOpen())
        return;
    try {
        Recordset rs;
        rs.open(QStringLiteral("SELECT * FROM DB_OPTIONS"));
        if (!rs.eof()) {
            g_custom.on = NzBool(rs.value(QStringLiteral("CUSTOM_FIELDS_ON")));
            g_custom.caption[0] = NzString(rs.value(QStringLiteral("FIELD_01_CAPTION")));
            g_custom.caption[1] = NzString(rs.value(QStringLiteral("FIELD_02_CAPTION")));
            g_custom.caption[2] = NzString(rs.value(QStringLiteral("FIELD_03_CAPTION")));
        }
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("LoadCustomFields"), QStringLiteral("Module modMain"));
    }
}

const CustomFields& customFields() {
    if (!g_customLoaded)
        reloadCustomFields();
    return g_custom;
}

void setCustomFields(const CustomFields& fields) {
    g_custom = fields;
    g_customLoaded = true;
}
