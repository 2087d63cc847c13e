#include "ui/skin/window_place.h"

#include "base/profile_file.h"
#include "ui/skin/window_system.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

#include <limits>

namespace {

const QString section = QStringLiteral("Window");
constexpr int restMilliseconds = 1000;

int Distance(const QRect& window, const QRect& screen) {
    return (window.center() - screen.center()).manhattanLength();
}

// The screen that shows most of the window, else the nearest one.
QRect BestScreen(const QRect& window, const QList<QRect>& screens) {
    QRect best;
    int mostShown = -1;
    int leastDistance = std::numeric_limits<int>::max();
    for (const QRect& screen : screens) {
        const QSize part = screen.intersected(window).size();
        const int shown = part.isEmpty() ? 0 : part.width() * part.height();
        const int distance = Distance(window, screen);
        if (shown < mostShown || (shown == mostShown && distance >= leastDistance)) continue;
        best = screen;
        mostShown = shown;
        leastDistance = distance;
    }
    return best;
}

}  // namespace

WindowPlace::WindowPlace(QWidget& watchedWindow, Clock& clock, const QString& settingsFile,
                         const QString& keyName)
    : window(watchedWindow), file(settingsFile), name(keyName), rest(clock, restMilliseconds) {
    window.installEventFilter(this);
    connect(&rest, &Timer::Tick, this, [this] {
        rest.SetEnabled(false);
        Save();
    });
}

QString WindowPlace::Read(const QString& side) const {
    return ReadSetting(file, section, name + side);
}

void WindowPlace::Write(const QString& side, int pixels) const {
    WriteSetting(file, section, name + side, QString::number(pixels));
}

void WindowPlace::Restore(const QWidget* neighbour) {
    if (!WindowSystem::PlacesWindows()) return;
    const QString left = Read("Left");
    const QString top = Read("Top");
    const bool remembered = !left.isEmpty() && !top.isEmpty();
    if (!remembered && !neighbour) return;
    constexpr int most = 100'000;  // no desktop is larger, and sums stay in range
    const QPoint place(std::clamp(ValLong(left), -most, most),
                       std::clamp(ValLong(top), -most, most));
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens << screen->availableGeometry();
    window.move(remembered ? OntoScreen({place, window.size()}, screens)
                           : Beside(neighbour->geometry(), window.size(), screens));
}

void WindowPlace::Save() {
    if (!WindowSystem::PlacesWindows() || !window.isVisible() || window.isMinimized()) return;
    const QPoint place = window.pos();
    if (Read("Left") == QString::number(place.x()) && Read("Top") == QString::number(place.y()))
        return;
    Write("Left", place.x());
    Write("Top", place.y());
}

QPoint WindowPlace::OntoScreen(const QRect& window, const QList<QRect>& screens) {
    const QRect screen = BestScreen(window, screens);
    if (screen.isNull()) return window.topLeft();
    const auto into = [](int begin, int length, int least, int room) {
        return std::max(least, std::min(begin, least + room - length));
    };
    return {into(window.left(), window.width(), screen.left(), screen.width()),
            into(window.top(), window.height(), screen.top(), screen.height())};
}

QPoint WindowPlace::Beside(const QRect& neighbour, const QSize& size, const QList<QRect>& screens) {
    constexpr int gap = 12;
    const QRect screen = BestScreen(neighbour, screens);
    for (const QPoint& place : {QPoint(neighbour.right() + 1 + gap, neighbour.top()),
                                QPoint(neighbour.left() - gap - size.width(), neighbour.top()),
                                QPoint(neighbour.left(), neighbour.bottom() + 1 + gap),
                                QPoint(neighbour.left(), neighbour.top() - gap - size.height())}) {
        // Along the other's side it may slide as the screen needs it.
        const QRect wanted(OntoScreen({place, size}, {screen}), size);
        if (!wanted.intersects(neighbour) && screen.contains(wanted)) return wanted.topLeft();
    }
    return OntoScreen({neighbour.topRight(), size}, screens);
}

bool WindowPlace::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Move && window.isVisible()) {
        rest.SetInterval(restMilliseconds);  // from the last move on
        rest.SetEnabled(true);
    }
    return QObject::eventFilter(object, event);
}
