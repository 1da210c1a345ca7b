// The answers of the two commands: SearchEquipment (an index and a detail page per hit) and BuildView
// (the build text of every hit down its upgrade chain).
#include "game/buildtext.h"
#include "game/caplog.h"
#include "game/vlinterface.h"

#include "data/quotes.h"
#include "data/recordset.h"
#include "views/equiptypes.h"
#include "views/modmain.h"

#include <QSet>

namespace {
constexpr int SearchHits = 25;
constexpr int BuildViewHits = 10;
constexpr int PageSize = 1024;

const QString& CrLf = caplog::CrLf;

// The equipment's type, as FindType reads it, but quiet: a failure is the caller's to log.
int typeOf(const QString& name) {
    Recordset rs;
    rs.open(QStringLiteral("SELECT TYPE FROM EQUIPMENTS WHERE EQUIPMENT_NAME = '") + FixQuotes(name) +
            QLatin1Char('\''));
    const QString type = rs.eof() ? QString() : NzString(rs.value(0));
    rs.close();
    return Enumerate(type);
}

// A custom column whose field has no caption is not in use and is left out.
bool unusedCustom(const QString& column) {
    for (int k = 0; k < 3; ++k)
        if (column == QStringLiteral("CUSTOM_0%1").arg(k + 1))
            return customFields().caption[k].trimmed().isEmpty();
    return false;
}

// Every column of the current row as "Label :" TAB value.
QString fieldLines(Recordset& rs) {
    QString out;
    if (rs.eof())
        return out;
    for (int i = 0; i < rs.fieldCount(); ++i) {
        const QString column = rs.fieldName(i);
        if (unusedCustom(column))
            continue;
        out += FormatFieldName(column) + QStringLiteral(" :\t") + NzString(rs.value(i)) + CrLf;
    }
    return out;
}

QString keywordText(QString keyword) {
    return keyword.replace(QLatin1Char('_'), QLatin1Char(' '));
}
} // namespace

QStringList clsVLInterface::searchNames(const QString& keyword, int limit) {
    QStringList names;
    Recordset rs;
    rs.open(QStringLiteral("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE EQUIPMENT_NAME LIKE '%") +
            FixQuotes(keyword) + QStringLiteral("%' ORDER BY EQUIPMENTS.EQUIPMENT_NAME"));
    for (; !rs.eof() && names.size() < limit; rs.moveNext())
        names << NzString(rs.value(0));
    rs.close();
    return names;
}

QString clsVLInterface::equipmentDetail(const QString& name) {
    QString text;
    const QString quoted = FixQuotes(name);
    {
        Recordset rs;
        rs.open(GetSQL(typeOf(name), false, false, false, customFields().on, QString(), false) +
                QStringLiteral(" AND EQUIPMENTS.EQUIPMENT_NAME = '") + quoted + QLatin1Char('\''));
        text = fieldLines(rs);
    }
    Recordset rs;
    rs.open(QStringLiteral(
                "SELECT SPECIAL, AMOUNT, UNITS, ENERGY_USE, RANGE, DURATION, SHUNT FROM EQUIP_SPECIALS "
                "WHERE EQUIPMENT_NAME ='") +
            quoted + QStringLiteral("' ORDER BY SPECIAL"));
    for (int k = 1; !rs.eof(); rs.moveNext(), ++k) {
        text += QStringLiteral("---==Special ") + QString::number(k) + QStringLiteral("==---") + CrLf;
        for (int i = 0; i < rs.fieldCount(); ++i)
            text += QStringLiteral(".   ") + FormatFieldName(rs.fieldName(i)) + QStringLiteral(" : ") +
                    NzString(rs.value(i)) + CrLf;
    }
    return text;
}

void clsVLInterface::WriteFieldsToPage(Recordset& rs, int character, int page) {
    WriteCapLogFile(fieldLines(rs), character, page);
}

void clsVLInterface::SearchEquipment(QString keyword, int character) {
    QString answer;
    try {
        if (keyword.size() < 3) {
            answer = QStringLiteral("Invalid Search Keyword!");
        } else {
            keyword = keywordText(keyword);
            const QStringList names = searchNames(keyword, SearchHits);
            if (names.isEmpty()) {
                answer = QStringLiteral("Search for ") + keyword + QStringLiteral(" returned 0 results.");
            } else {
                QString index;
                int n = 0;
                for (const QString& name : names) {
                    ++n;
                    const int page = caplog::AnswerPage + n;
                    index += QString::number(n) + QStringLiteral(". ") + name + QStringLiteral(", Page ") +
                             QString::number(page) + CrLf;
                    WriteCapLogFile(equipmentDetail(name), character, page);
                }
                answer = QString::number(n) + QStringLiteral(" Records Found searching for ") + keyword +
                         CrLf + CrLf + index;
            }
        }
    } catch (const std::exception& e) {
        // The index of what was answered before the failure still tells the player something.
        LogChannelError(e, QStringLiteral("SearchEquipment"));
        if (answer.isEmpty())
            return;
    }
    WriteCapLogFile(answer, character, caplog::AnswerPage);
}

void clsVLInterface::writePaged(const QString& text, int character, int& page) {
    if (text.size() <= PageSize) {
        WriteCapLogFile(text, character, caplog::AnswerPage + page);
        return;
    }
    // Whole lines refill the pages; a page may pass the size by the one line that crossed it.
    QString buffer;
    for (const QString& line : text.split(CrLf)) {
        if (buffer.size() > PageSize) {
            WriteCapLogFile(buffer, character, caplog::AnswerPage + page);
            ++page;
            buffer = line + CrLf;
        } else {
            buffer += line + CrLf;
        }
    }
    if (!buffer.isEmpty())
        WriteCapLogFile(buffer, character, caplog::AnswerPage + page);
}

void clsVLInterface::DisplayBuildView(const QString& keyword, int character) {
    try {
        if (keyword.size() < 3) {
            WriteCapLogFile(QStringLiteral("Invalid Search Keyword!"), character, caplog::AnswerPage);
            return;
        }
        const QString shown = keywordText(keyword);
        const QStringList hits = searchNames(shown, BuildViewHits);
        if (hits.isEmpty()) {
            WriteCapLogFile(QStringLiteral("Search for ") + shown + QStringLiteral(" returned 0 results."),
                            character, caplog::AnswerPage);
            return;
        }
        BuildTextWriter w;
        int page = 0;
        int count = 0;
        QString index;
        for (const QString& hit : hits) {
            QString name = hit;
            int first = 0;
            QSet<QString> chain;
            for (;;) {
                ++page;
                if (first == 0)
                    first = page;
                const QString text =
                    QStringLiteral("BUILD INFORMATION FOR: ") + name + CrLf + CrLf +
                    QStringLiteral("UPGRADE FROM:") + CrLf + w.GetEquip(name, 0, buildtext::Equipment) +
                    CrLf + QStringLiteral("COMPONENTS REQUIRED:") + CrLf +
                    w.GetComps(name, 0, buildtext::Equipment) + CrLf +
                    QStringLiteral("RAW MATERIALS REQUIRED:") + CrLf +
                    w.GetRawMat(name, 0, buildtext::Equipment) + CrLf + QStringLiteral("ITEMS REQUIRED:") +
                    CrLf + w.GetItems(name, 0, buildtext::Equipment) + CrLf;
                writePaged(text, character, page);
                chain.insert(name);
                // Down the upgrade chain: each equipment it is upgraded from gets pages of its own. Two
                // sources come back run together, match nothing and so end the chain.
                const QString next = w.GetEquip(name, 0, buildtext::Equipment, true);
                if (next == buildtext::NoRecords || next.isEmpty())
                    break;
                if (chain.contains(next)) {
                    // An upgrade chain that comes back to itself would never end.
                    LogChannelError(VbError(vberr::OutOfStackSpace, QStringLiteral("Out of stack space")),
                                    QStringLiteral("DisplayBuildView"));
                    break;
                }
                name = next;
            }
            ++count;
            index += QString::number(count) + QStringLiteral(". ") + hit + QStringLiteral(", Page ") +
                     QString::number(caplog::AnswerPage + first) + CrLf;
        }
        WriteCapLogFile(QString::number(count) + QStringLiteral(" Records found searching for ") + shown +
                            CrLf + CrLf + index,
                        character, caplog::AnswerPage);
    } catch (const std::exception& e) {
        LogChannelError(e, QStringLiteral("DisplayBuildView"));
    }
}
