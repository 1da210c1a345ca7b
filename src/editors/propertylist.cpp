#include "editors/propertylist.h"

#include "core/clock.h"
#include "data/recordset.h"
#include "views/modmain.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>
#include <limits>

namespace {
QString numberText(double v) {
    return QString::number(v, 'g', 15);
}

bool parseWhole(const QString& text, qint64* out) {
    bool ok = false;
    *out = text.trimmed().toLongLong(&ok);
    if (!ok)
        *out = QLocale::system().toLongLong(text.trimmed(), &ok);
    return ok;
}

bool parseDecimal(const QString& text, double* out) {
    bool ok = false;
    *out = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok)
        *out = QLocale::system().toDouble(text.trimmed(), &ok);
    return ok && std::isfinite(*out);
}

QDateTime parseDate(const QString& text) {
    const QString t = text.trimmed();
    for (const char* f : {"yyyy-MM-dd hh:mm:ss", "yyyy-MM-dd hh:mm", "yyyy-MM-ddThh:mm:ss"}) {
        const QDateTime d = QDateTime::fromString(t, QLatin1String(f));
        if (d.isValid())
            return d;
    }
    const QDate day = QDate::fromString(t, QStringLiteral("yyyy-MM-dd"));
    if (day.isValid())
        return day.startOfDay();
    const QDateTime local = QLocale::system().toDateTime(t, QLocale::ShortFormat);
    if (local.isValid())
        return local;
    const QDate localDay = QLocale::system().toDate(t, QLocale::ShortFormat);
    return localDay.isValid() ? localDay.startOfDay() : QDateTime();
}

QString yesNo(const QString& text) {
    const QString t = text.trimmed();
    for (const char* yes : {"Yes", "True", "-1", "1"})
        if (t.compare(QLatin1String(yes), Qt::CaseInsensitive) == 0)
            return QStringLiteral("Yes");
    for (const char* no : {"No", "False", "0"})
        if (t.compare(QLatin1String(no), Qt::CaseInsensitive) == 0)
            return QStringLiteral("No");
    return QString();
}

// The value as it is kept: the spelling of the choice, the normal form of a date or a yes/no.
QString normalised(const PropertyRow& row, const QString& value) {
    if (value.isEmpty())
        return value;
    switch (row.editor) {
    case PropertyEditor::YesNo:
        return yesNo(value);
    case PropertyEditor::Date:
        return generalDate(parseDate(value));
    case PropertyEditor::Whole: {
        qint64 n = 0;
        return parseWhole(value, &n) ? QString::number(n) : value;
    }
    case PropertyEditor::Decimal: {
        double d = 0;
        return parseDecimal(value, &d) ? numberText(d) : value;
    }
    case PropertyEditor::Choice:
        for (const QString& c : row.choices)
            if (c.compare(value, Qt::CaseInsensitive) == 0)
                return c;
        return value;
    default:
        return value;
    }
}
} // namespace

QList<QPair<QString, QString>> PriceChoices(PriceWords kind) {
    if (kind == PriceWords::Price)
        return {{QStringLiteral("Mission Reward"), QStringLiteral("-2")},
                {QStringLiteral("Loot Only"), QStringLiteral("-1")},
                {QStringLiteral("Unknown"), QStringLiteral("0")}};
    if (kind == PriceWords::Cost)
        return {{QStringLiteral("Not Manufacturable"), QStringLiteral("-1")},
                {QStringLiteral("Unknown"), QStringLiteral("0")}};
    return {};
}

QString PriceDisplay(const QString& value, PriceWords kind) {
    if (kind == PriceWords::None || value.trimmed().isEmpty())
        return value;
    return PriceText(value, kind == PriceWords::Cost);
}

QStringList TemperamentChoices() {
    return {QStringLiteral("Very Low"), QStringLiteral("Low"), QStringLiteral("Average"),
            QStringLiteral("High"), QStringLiteral("Very High")};
}

QStringList ChoicesFrom(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return PopulateList(rs);
}

void PropertyList::addCategory(const QString& key, const QString& caption) {
    PropertyRow r;
    r.key = key;
    r.caption = caption;
    r.parent = CategoryParent;
    r.readOnly = true;
    m_rows.append(r);
}

PropertyRow& PropertyList::addRow(const QString& category, const QString& key, const QString& caption,
                                  PropertyEditor editor) {
    PropertyRow r;
    r.key = key;
    r.caption = caption.isEmpty() ? FormatFieldName(key.mid(key.lastIndexOf(QLatin1Char('.')) + 1)) : caption;
    r.parent = category;
    r.editor = editor;
    // Rows stay under their category: a row joins the end of its group.
    int at = int(m_rows.size());
    const int cat = indexOf(category);
    if (cat >= 0) {
        at = cat + 1;
        while (at < m_rows.size() && m_rows.at(at).parent == category)
            ++at;
    }
    m_rows.insert(at, r);
    return m_rows[at];
}

PropertyRow& PropertyList::addField(const QString& category, const Recordset& rs, const QString& field,
                                    const QString& caption) {
    const int i = rs.fieldIndex(field);
    const FieldKind kind = i >= 0 ? rs.fieldKind(i) : FieldKind::Text;
    PropertyEditor editor = PropertyEditor::Text;
    if (isWholeNumber(kind))
        editor = PropertyEditor::Whole;
    else if (isFraction(kind))
        editor = PropertyEditor::Decimal;
    else if (kind == FieldKind::Boolean)
        editor = PropertyEditor::YesNo;
    else if (kind == FieldKind::Date)
        editor = PropertyEditor::Date;
    PropertyRow& r = addRow(category, field, caption, editor);
    if (kind == FieldKind::Integer16) {
        r.minimum = -32768;
        r.maximum = 32767;
    } else if (kind == FieldKind::Long) {
        r.minimum = std::numeric_limits<qint32>::min();
        r.maximum = std::numeric_limits<qint32>::max();
    }
    if (kind == FieldKind::Text && i >= 0)
        r.maxLength = rs.definedSize(i);
    if (i >= 0 && !rs.eof()) {
        const QVariant v = rs.value(i);
        QString text;
        if (v.isNull())
            text = QString();
        else if (kind == FieldKind::Boolean)
            text = v.toBool() ? QStringLiteral("Yes") : QStringLiteral("No");
        else
            text = v.toString();
        r.value = r.loaded = text;
    }
    return r;
}

int PropertyList::indexOf(const QString& key) const {
    for (int i = 0; i < m_rows.size(); ++i)
        if (m_rows.at(i).key.compare(key, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

PropertyRow* PropertyList::row(const QString& key) {
    const int i = indexOf(key);
    return i < 0 ? nullptr : &m_rows[i];
}

const PropertyRow* PropertyList::row(const QString& key) const {
    const int i = indexOf(key);
    return i < 0 ? nullptr : &m_rows.at(i);
}

QString PropertyList::value(const QString& key) const {
    const PropertyRow* r = row(key);
    return r ? r->value : QString();
}

void PropertyList::load(const QString& key, const QString& value) {
    const int i = indexOf(key);
    if (i < 0)
        return;
    m_rows[i].value = m_rows[i].loaded = value;
    if (onChanged)
        onChanged(i);
}

void PropertyList::applyDefaults() {
    for (int i = 0; i < m_rows.size(); ++i) {
        PropertyRow& r = m_rows[i];
        if (r.isCategory() || r.defaultValue.isEmpty())
            continue;
        r.value = r.defaultValue;
        r.loaded.clear();
        if (onChanged)
            onChanged(i);
    }
}

QString PropertyList::checkValue(int index, const QString& value) const {
    if (index < 0 || index >= m_rows.size())
        return QStringLiteral("There is no such property.");
    const PropertyRow& r = m_rows.at(index);
    if (r.isCategory() || r.readOnly)
        return r.caption + QStringLiteral(" cannot be changed.");
    if (value.trimmed().isEmpty())
        return QString();
    switch (r.editor) {
    case PropertyEditor::Whole: {
        qint64 n = 0;
        if (!parseWhole(value, &n))
            return r.caption + QStringLiteral(" must be a whole number.");
        const double lo = r.ranged || r.maximum > r.minimum ? r.minimum : std::numeric_limits<qint32>::min();
        const double hi = r.ranged || r.maximum > r.minimum ? r.maximum : std::numeric_limits<qint32>::max();
        if (double(n) < lo || double(n) > hi)
            return r.caption + QStringLiteral(" must be between ") + numberText(lo) +
                   QStringLiteral(" and ") + numberText(hi) + QLatin1Char('.');
        return QString();
    }
    case PropertyEditor::Decimal: {
        double d = 0;
        if (!parseDecimal(value, &d))
            return r.caption + QStringLiteral(" must be a number.");
        if (r.ranged && (d < r.minimum || d > r.maximum))
            return r.caption + QStringLiteral(" must be between ") + numberText(r.minimum) +
                   QStringLiteral(" and ") + numberText(r.maximum) + QLatin1Char('.');
        return QString();
    }
    case PropertyEditor::YesNo:
        return yesNo(value).isEmpty() ? r.caption + QStringLiteral(" must be Yes or No.") : QString();
    case PropertyEditor::Date:
        return parseDate(value).isValid() ? QString() : r.caption + QStringLiteral(" must be a date.");
    case PropertyEditor::Choice:
        if (r.choicesOnly && !r.choices.contains(value, Qt::CaseInsensitive))
            return r.caption + QStringLiteral(" must be one of the choices in its list.");
        return QString();
    case PropertyEditor::Text:
        if (r.maxLength > 0 && value.size() > r.maxLength)
            return r.caption + QStringLiteral(" can hold at most ") + QString::number(r.maxLength) +
                   QStringLiteral(" characters.");
        return QString();
    }
    return QString();
}

bool PropertyList::setValue(int index, const QString& value) {
    if (!checkValue(index, value).isEmpty())
        return false;
    PropertyRow& r = m_rows[index];
    const QString v = normalised(r, value.trimmed().isEmpty() ? QString() : value);
    if (v != r.value) {
        r.value = v;
        if (onChanged)
            onChanged(index);
    }
    return true;
}

QString PropertyList::helpText(const QString& section, const PropertyRow& row, const QString& name) {
    QString help = GetToolTip(section, row.key, name);
    if (row.ranged)
        help += QStringLiteral(" (Valid Range: ") + numberText(row.minimum) + QStringLiteral(" to ") +
                numberText(row.maximum) + QLatin1Char(')');
    if (row.readOnly && !row.isCategory())
        help += QStringLiteral(" (Read Only)");
    if (!row.defaultValue.isEmpty())
        help += QStringLiteral(" (Default: ") + row.defaultValue + QLatin1Char(')');
    return help;
}

void PropertyList::buildHelp(const QString& section, const QString& name) {
    for (PropertyRow& r : m_rows)
        r.help = helpText(section, r, name);
}

QStringList PropertyList::changedKeys() const {
    QStringList keys;
    for (const PropertyRow& r : m_rows)
        if (r.changed())
            keys.append(r.key);
    return keys;
}

bool PropertyList::writeChanged(Recordset& rs, const std::function<bool(const QString& key)>& skip) const {
    bool wrote = false;
    for (const PropertyRow& r : m_rows) {
        if (!r.changed() || (skip && skip(r.key)))
            continue;
        rs.setValue(r.key, r.value.isEmpty() ? QVariant() : QVariant(r.value));
        wrote = true;
    }
    return wrote;
}

void PropertyList::markSaved() {
    for (PropertyRow& r : m_rows)
        r.loaded = r.value;
}
