#include "ui/main/splash.h"

#include "ui/skin/skin.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace {
constexpr int seenMilliseconds = 1500;
}  // namespace

Splash::Splash(const SkinFolders& skinFolders, Clock& clock)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      folders(skinFolders),
      seen(clock, seenMilliseconds) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    connect(&seen, &Timer::Tick, this, [this] {
        seen.SetEnabled(false);
        wasSeen = true;
        HideWhenSeen();
    });
}

void Splash::Show() {
    picture = Skin(folders, SkinFolders::Default).SharedPicture("startbg.jpg");
    if (picture.isNull()) return;
    setFixedSize(picture.size());
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());
    seen.SetEnabled(true);
    show();
    repaint();  // what comes next keeps the event loop busy
}

void Splash::Finish() {
    finished = true;
    HideWhenSeen();
}

void Splash::HideWhenSeen() {
    if (finished && wasSeen) hide();
}

void Splash::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), picture);
}

void Splash::mousePressEvent(QMouseEvent*) {
    hide();
}
