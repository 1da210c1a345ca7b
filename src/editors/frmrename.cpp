#include "editors/frmrename.h"

#include "core/childwindows.h"
#include "core/prompt.h"
#include "editors/recordops.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmRename::frmRename(const QString& caption, const QString& oldName, QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("frmRename"));
    setWindowTitle(caption);
    auto* layout = new QVBoxLayout(this);
    lblPrompt = new QLabel(tr("New name for \"%1\":").arg(oldName), this);
    lblPrompt->setObjectName(QStringLiteral("lblPrompt"));
    lblPrompt->setWordWrap(true);
    txtName = new QLineEdit(oldName, this);
    txtName->setObjectName(QStringLiteral("txtName"));
    txtName->selectAll();
    txtName->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
    lblPrompt->setBuddy(txtName);
    auto* buttons = new QDialogButtonBox(this);
    cmdOK = buttons->addButton(QDialogButtonBox::Ok);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = buttons->addButton(QDialogButtonBox::Cancel);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    layout->addWidget(lblPrompt);
    layout->addWidget(txtName);
    layout->addWidget(buttons);
    connect(cmdOK, &QPushButton::clicked, this, &frmRename::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    setSizeGripEnabled(false);
}

void frmRename::cmdOK_Click() {
    const QString name = txtName->text().trimmed();
    const NameRefusal refusal = CheckNewName(name);
    if (!refusal.text.isEmpty()) {
        MsgBox(refusal.text, vb::Exclamation, refusal.title);
        txtName->setFocus();
        txtName->selectAll();
        return;
    }
    m_name = name;
    accept();
}

QString frmRename::Ask(const QString& caption, const QString& oldName, QWidget* owner) {
    frmRename dialog(caption, oldName, owner ? owner : OwnerWindow());
    return dialog.exec() == QDialog::Accepted ? dialog.newName() : QString();
}
