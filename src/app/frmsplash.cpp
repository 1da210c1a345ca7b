#include "app/frmsplash.h"
#include "core/imagestore.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>

namespace {
QPointer<frmSplash>& current() {
    static QPointer<frmSplash> splash;
    return splash;
}

// Stands in for the splash picture when the images folder is missing, so start-up still shows something.
QPixmap plainSplash() {
    QPixmap pix(480, 300);
    pix.fill(QColor(10, 12, 30));
    QPainter p(&pix);
    QFont f = p.font();
    f.setPixelSize(72);
    f.setBold(true);
    p.setFont(f);
    p.setPen(QColor(190, 205, 255));
    p.drawText(pix.rect(), Qt::AlignCenter, QStringLiteral("VOSK"));
    return pix;
}
} // namespace

frmSplash* splashWindow() {
    return current();
}

frmSplash::frmSplash(QWidget* owner) : QWidget(owner, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmSplash"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("VOSK"));
    current() = this;

    QPixmap picture = QPixmap::fromImage(
        ImageStore::instance().picture(QStringLiteral("IMAGE"), QStringLiteral("SPLASH.GIF")));
    if (picture.isNull())
        picture = plainSplash();

    imgSplash = new QLabel(this);
    imgSplash->setObjectName(QStringLiteral("imgSplash"));
    imgSplash->setPixmap(picture);
    imgSplash->setFixedSize(picture.size());

    lblVersion = new QLabel(imgSplash);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblVersion->setText(QStringLiteral("Version %1.%2.%3")
                            .arg(VOSK_VERSION_MAJOR)
                            .arg(VOSK_VERSION_MINOR)
                            .arg(VOSK_VERSION_REVISION));
    lblVersion->setStyleSheet(QStringLiteral("color: rgb(170, 180, 220); background: transparent;"));
    lblVersion->adjustSize();
    lblVersion->move(12, picture.height() - lblVersion->height() - 8);

    prgLoad = new QProgressBar(this);
    prgLoad->setObjectName(QStringLiteral("prgLoad"));
    prgLoad->setTextVisible(false);
    prgLoad->setFixedHeight(10);
    // A plain bar in the picture's colours rather than the desktop's light trough.
    prgLoad->setStyleSheet(QStringLiteral(
        "QProgressBar { background: rgb(14, 14, 34); border: none; border-top: 1px solid rgb(60, 70, 130); }"
        "QProgressBar::chunk { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 rgb(150, 180, 255),"
        " stop:1 rgb(70, 100, 200)); }"));
    prgLoad->setRange(0, 0);
    prgLoad->setValue(0);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(imgSplash);
    layout->addWidget(prgLoad);
    setFixedSize(layout->sizeHint());

    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.center() - rect().center());
    }
    if (owner)
        owner->installEventFilter(this);
}

frmSplash::~frmSplash() = default;

bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched == parentWidget()) {
        // Without preloading nobody else closes the splash: it goes once the main window is up and
        // the event loop runs.
        parentWidget()->removeEventFilter(this);
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}
