#include "editors/gridmodel.h"

GridModel::GridModel(const QString& name) : m_name(name) {
    m_cells.append(QStringList(QString()));
    m_numeric.append(false);
    m_widths.append(0);
    m_lists.append(QList<GridListEntry>());
}

void GridModel::setCols(int count) {
    count = qMax(1, count);
    if (count == m_cols)
        return;
    GridListener* l = told();
    if (l)
        l->gridAboutToReset();
    for (QStringList& row : m_cells) {
        while (row.size() < count)
            row.append(QString());
        while (row.size() > count)
            row.removeLast();
    }
    m_numeric.resize(count, false);
    m_widths.resize(count, 0);
    m_lists.resize(count);
    m_cols = count;
    if (l)
        l->gridReset();
}

QString GridModel::text(int row, int col) const {
    if (row < 0 || row >= rows() || col < 0 || col >= m_cols)
        return QString();
    return m_cells.at(row).at(col);
}

void GridModel::setText(int row, int col, const QString& text) {
    if (row < 0 || row >= rows() || col < 0 || col >= m_cols || m_cells[row][col] == text)
        return;
    m_cells[row][col] = text;
    if (GridListener* l = told()) {
        if (row == 0)
            l->gridLayoutChanged();
        else
            l->gridCellChanged(row, col);
    }
}

int GridModel::addRow(const QString& rowHeader) {
    QStringList row(m_cols);
    row[0] = rowHeader;
    const int at = lastDataRow() + 1;
    GridListener* l = told();
    if (l)
        l->gridAboutToInsertRows(at, at);
    m_cells.insert(at, row);
    if (l)
        l->gridRowsInserted();
    return at;
}

void GridModel::removeRow(int row) {
    if (row < 1 || row > lastDataRow())
        return;
    GridListener* l = told();
    if (l)
        l->gridAboutToRemoveRows(row, row);
    m_cells.removeAt(row);
    if (l)
        l->gridRowsRemoved();
}

void GridModel::clearRows() {
    const int last = lastDataRow();
    if (last < 1)
        return;
    GridListener* l = told();
    if (l)
        l->gridAboutToRemoveRows(1, last);
    m_cells.remove(1, last);
    if (l)
        l->gridRowsRemoved();
}

void GridModel::setFormatString(const QString& format) {
    const QStringList parts = format.split(QLatin1Char('|'));
    setCols(qMax(m_cols, int(parts.size())));
    for (int c = 0; c < parts.size(); ++c) {
        m_cells[0][c] = parts.at(c).trimmed();
        m_widths[c] = int(parts.at(c).size()) * m_charWidth;
    }
    if (GridListener* l = told())
        l->gridLayoutChanged();
}

void GridModel::setColNumeric(int col, bool numeric) {
    if (col < 0 || col >= m_cols)
        return;
    m_numeric[col] = numeric;
    if (GridListener* l = told())
        l->gridLayoutChanged();
}

bool GridModel::colNumeric(int col) const {
    return col >= 0 && col < m_cols && m_numeric.at(col);
}

void GridModel::setColWidth(int col, int width) {
    if (col < 0 || col >= m_cols || m_widths[col] == width)
        return;
    m_widths[col] = width;
    if (GridListener* l = told())
        l->gridLayoutChanged();
}

int GridModel::colWidth(int col) const {
    return col >= 0 && col < m_cols ? m_widths.at(col) : 0;
}

void GridModel::addListItem(int col, const QString& display, const QString& data) {
    if (col >= 0 && col < m_cols)
        m_lists[col].append({display, data});
}

void GridModel::clearList(int col) {
    if (col >= 0 && col < m_cols)
        m_lists[col].clear();
}

QList<GridListEntry> GridModel::list(int col) const {
    return col >= 0 && col < m_cols ? m_lists.at(col) : QList<GridListEntry>();
}

QStringList GridModel::listDisplays(int col) const {
    QStringList out;
    for (const GridListEntry& e : list(col))
        out.append(e.display);
    return out;
}

void GridModel::setRedraw(bool on) {
    if (m_redraw == on)
        return;
    m_redraw = on;
    if (on && m_dirty) {
        m_dirty = false;
        if (m_listener) {
            m_listener->gridAboutToReset();
            m_listener->gridReset();
        }
    }
}

void GridModel::setAllowAdd(bool allow) {
    if (allow == m_allowAdd)
        return;
    GridListener* l = told();
    if (allow) {
        if (l)
            l->gridAboutToInsertRows(rows(), rows());
        m_allowAdd = true;
        m_cells.append(QStringList(m_cols));
        if (l)
            l->gridRowsInserted();
    } else {
        if (l)
            l->gridAboutToRemoveRows(rows() - 1, rows() - 1);
        m_cells.removeLast();
        m_allowAdd = false;
        if (l)
            l->gridRowsRemoved();
    }
}

void GridModel::ensureEntryRow() {
    if (!m_allowAdd)
        return;
    const QStringList& last = m_cells.last();
    for (int c = 1; c < m_cols; ++c) {
        if (!last.at(c).isEmpty()) {
            GridListener* l = told();
            if (l)
                l->gridAboutToInsertRows(rows(), rows());
            m_cells.append(QStringList(m_cols));
            if (l)
                l->gridRowsInserted();
            return;
        }
    }
}

bool GridModel::beginUserEdit(int row, int col) {
    if (m_locked || row < 1 || row >= rows() || col < 1 || col >= m_cols)
        return false;
    bool cancel = false;
    if (beforeEdit)
        beforeEdit(*this, row, col, cancel);
    return !cancel;
}

void GridModel::userEdit(int row, int col, const QString& text) {
    if (m_locked || row < 1 || row >= rows() || col < 1 || col >= m_cols)
        return;
    // Leaving a cell as it was is no edit: a location's nav point must not be lost to it.
    if (text == m_cells.at(row).at(col))
        return;
    setText(row, col, text);
    // A value typed into the entry row turns it into a data row before the hooks see it.
    ensureEntryRow();
    if (afterEdit)
        afterEdit(*this, row, col);
}

void GridModel::removeRowByUser(int row) {
    if (!m_locked)
        removeRow(row);
}
