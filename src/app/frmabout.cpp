#include "app/frmabout.h"

#include "app/aboutfacts.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About VOSK"));
    const AboutFacts f = GatherAboutFacts();

    auto* column = new QVBoxLayout(this);
    lblTitle = new QLabel(QStringLiteral("VOSK v") + f.version, this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    lblTitle->setFont(big);
    column->addWidget(lblTitle);
    auto* blurb =
        new QLabel(QStringLiteral("A database of the equipment, components, raw materials, items, MOBs "
                                  "and stations of Velmora."),
                   this);
    blurb->setWordWrap(true);
    column->addWidget(blurb);

    lblDatabase = new QLabel(QStringLiteral("Database: ") + f.databasePath, this);
    lblDatabase->setObjectName(QStringLiteral("lblDatabase"));
    lblDatabase->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblDatabase->setWordWrap(true);
    column->addWidget(lblDatabase);

    lstCounts = new QTableWidget(int(f.counts.size()), 2, this);
    lstCounts->setObjectName(QStringLiteral("lstCounts"));
    lstCounts->setHorizontalHeaderLabels({QStringLiteral("Records"), QStringLiteral("Count")});
    lstCounts->verticalHeader()->hide();
    lstCounts->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstCounts->setSelectionMode(QAbstractItemView::NoSelection);
    lstCounts->setFocusPolicy(Qt::NoFocus);
    const QLocale english(QLocale::English);
    for (int i = 0; i < f.counts.size(); ++i) {
        lstCounts->setItem(i, 0, new QTableWidgetItem(f.counts[i].kind));
        auto* n = new QTableWidgetItem(f.counts[i].count < 0 ? QStringLiteral("not available")
                                                             : english.toString(f.counts[i].count));
        n->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        lstCounts->setItem(i, 1, n);
    }
    lstCounts->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    lstCounts->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    lstCounts->setFixedHeight(lstCounts->horizontalHeader()->sizeHint().height() +
                              lstCounts->verticalHeader()->defaultSectionSize() * int(f.counts.size()) + 4);
    column->addWidget(lstCounts);

    lblVersions = new QLabel(
        QStringLiteral("Qt ") + f.qtVersion + QStringLiteral("    SQLite ") + f.sqliteVersion, this);
    lblVersions->setObjectName(QStringLiteral("lblVersions"));
    column->addWidget(lblVersions);

    txtLicence = new QPlainTextEdit(LicenceText(), this);
    txtLicence->setObjectName(QStringLiteral("txtLicence"));
    txtLicence->setReadOnly(true);
    txtLicence->setMinimumHeight(140);
    column->addWidget(txtLicence, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    buttons->addWidget(cmdOK);
    column->addLayout(buttons);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    resize(460, 600);
}
