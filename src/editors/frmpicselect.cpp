#include "editors/frmpicselect.h"

#include "core/childwindows.h"
#include "core/imagestore.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

frmPicSelect::frmPicSelect(long current, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPicSelect"));
    setWindowTitle(QStringLiteral("Select a Picture"));
    auto* col = new QVBoxLayout(this);
    auto* label = new QLabel(QStringLiteral("&Pictures:"), this);
    lstIcons = new QListWidget(this);
    lstIcons->setObjectName(QStringLiteral("lstIcons"));
    label->setBuddy(lstIcons);
    lstIcons->setViewMode(QListView::IconMode);
    lstIcons->setIconSize(QSize(32, 32));
    lstIcons->setGridSize(QSize(56, 60));
    lstIcons->setResizeMode(QListView::Adjust);
    lstIcons->setMovement(QListView::Static);
    lstIcons->setUniformItemSizes(true);
    const long count = GetItemIconCount();
    for (long i = 0; i < count; ++i) {
        auto* item =
            new QListWidgetItem(QIcon(QPixmap::fromImage(GetItemIcon(i))), QString::number(i), lstIcons);
        item->setData(Qt::UserRole, qlonglong(i));
        item->setTextAlignment(Qt::AlignHCenter);
    }
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cmdOK);
    row->addWidget(cmdCancel);
    col->addWidget(label);
    col->addWidget(lstIcons, 1);
    col->addLayout(row);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(lstIcons, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(lstIcons, &QListWidget::currentItemChanged, this,
            [this](QListWidgetItem* now) { cmdOK->setEnabled(now != nullptr); });
    select(current);
    cmdOK->setEnabled(lstIcons->currentItem() != nullptr);
    resize(560, 420);
}

long frmPicSelect::picture() const {
    const QListWidgetItem* item = lstIcons->currentItem();
    return item ? long(item->data(Qt::UserRole).toLongLong()) : -1;
}

void frmPicSelect::select(long picture) {
    if (picture >= 0 && picture < lstIcons->count()) {
        lstIcons->setCurrentRow(int(picture));
        lstIcons->scrollToItem(lstIcons->currentItem(), QAbstractItemView::PositionAtCenter);
    }
}

long DisplayItemIconDialogbox(long current, QWidget* parent) {
    frmPicSelect dialog(current, parent ? parent->window() : OwnerWindow());
    if (dialog.exec() != QDialog::Accepted)
        return -1;
    return dialog.picture();
}
