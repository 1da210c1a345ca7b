#include "editors/frmlisteditdialog.h"

#include "core/childwindows.h"
#include "core/prompt.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "views/viewwidgets.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const QString Container = QStringLiteral("Form frmSpecialsDialog");
}

frmListEditDialog::frmListEditDialog(const LookupTable& lookup, QWidget* parent)
    : QDialog(parent), m_lookup(lookup) {
    setObjectName(QStringLiteral("frmListEditDialog"));
    const QString kind = lookup.kind;
    setWindowTitle(QStringLiteral("Modify ") + kind + QLatin1Char('s'));
    auto* col = new QVBoxLayout(this);
    lblList = new QLabel(QStringLiteral("Available ") + kind + QLatin1Char('s'), this);
    lstSpecials = NewList(this, QStringLiteral("lstSpecials"));
    lblList->setBuddy(lstSpecials);
    cmdAddItem = new QPushButton(QStringLiteral("Add ") + kind, this);
    cmdAddItem->setObjectName(QStringLiteral("cmdAddItem"));
    cmdDeleteItem = new QPushButton(QStringLiteral("Delete ") + kind, this);
    cmdDeleteItem->setObjectName(QStringLiteral("cmdDeleteItem"));
    cmdClose = new QPushButton(QStringLiteral("Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdAddItem);
    row->addWidget(cmdDeleteItem);
    row->addStretch();
    row->addWidget(cmdClose);
    col->addWidget(lblList);
    col->addWidget(lstSpecials, 1);
    col->addLayout(row);
    connect(cmdAddItem, &QPushButton::clicked, this, &frmListEditDialog::cmdAddItem_Click);
    connect(cmdDeleteItem, &QPushButton::clicked, this, &frmListEditDialog::cmdDeleteItem_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    refill();
    resize(340, 400);
}

void frmListEditDialog::refill() {
    lstSpecials->clear();
    try {
        lstSpecials->addItems(m_lookup.values());
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("Form_Load"), Container);
    }
}

void frmListEditDialog::select(const QString& value) {
    for (int i = 0; i < lstSpecials->count(); ++i) {
        if (lstSpecials->item(i)->text().compare(value, Qt::CaseInsensitive) == 0) {
            lstSpecials->setCurrentRow(i);
            lstSpecials->scrollToItem(lstSpecials->item(i));
            return;
        }
    }
}

void frmListEditDialog::cmdAddItem_Click() {
    const QString kind = m_lookup.kind;
    const QString value = prompts()
                              .inputBox(QStringLiteral("Please enter in the new ") + kind + QLatin1Char(':'),
                                        QStringLiteral("New ") + kind)
                              .trimmed();
    if (value.isEmpty())
        return;
    // The quote rule would store such a value with one quote less than typed.
    if (!ValidName(value)) {
        MsgBox(QStringLiteral("Names cannot contain a double single-quote! Please change name to continue."),
               vb::Exclamation, QStringLiteral("Invalid name"));
        return;
    }
    try {
        db().execute(m_lookup.insertSql(value));
        m_changed = true;
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("cmdAddItem_Click"), Container);
    }
    refill();
    select(value);
}

void frmListEditDialog::cmdDeleteItem_Click() {
    const QString kind = m_lookup.kind;
    QListWidgetItem* item = lstSpecials->currentItem();
    if (!item || !item->isSelected()) {
        MsgBox(QStringLiteral("Please make sure there is a ") + kind +
                   QStringLiteral(" selected before deleting."),
               vb::Information, QStringLiteral("No Special Selected"));
        return;
    }
    const QString value = item->text();
    if (MsgBox(QStringLiteral("Are you sure you want to delete ") + kind + QStringLiteral(" '") + value +
                   QStringLiteral("'?"),
               vb::YesNo + vb::Question, QStringLiteral("Delete?")) != vb::Yes)
        return;
    switch (DeleteLookupValue(m_lookup, value, QStringLiteral("cmdDeleteItem_Click"), Container)) {
    case LookupDelete::Deleted:
        m_changed = true;
        break;
    case LookupDelete::InUse:
        MsgBox(QStringLiteral("Cannot delete ") + kind + QStringLiteral(" '") + value +
                   QStringLiteral("'. It is currently being used by another database record."),
               vb::Exclamation, QStringLiteral("Record in Use"));
        break;
    case LookupDelete::Failed:
        break;
    }
    const int row = lstSpecials->currentRow();
    refill();
    if (lstSpecials->count() > 0)
        lstSpecials->setCurrentRow(qMin(row, lstSpecials->count() - 1));
}

bool DisplayListEditDialog(const LookupTable& lookup, QWidget* parent) {
    frmListEditDialog dialog(lookup, parent ? parent->window() : OwnerWindow());
    dialog.exec();
    return dialog.changed();
}
