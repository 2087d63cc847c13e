#include "ui/menu/help_key.h"

#include <QCoreApplication>
#include <QHash>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace {

// The page of each window, by its class; tools/check-help knows by it what a page has to name.
const QHash<QString, QString> pages{
    {"CameraAdjusting", "camera-picture"},
    {"CameraFormat", "camera-format"},
    {"CameraSources", "camera-sources"},
    {"Guide", "guide"},
    {"Info", "about"},
    {"frmAnotherCamera", "another-camera"},
    {"frmArchive", "archive"},
    {"frmBild", "overlay-picture"},
    {"frmCam", "camera"},
    {"frmFTP", "ftp"},
    {"frmFilm", "film-window"},
    {"frmHours", "hours"},
    {"frmLanguage", "menu"},
    {"frmLog", "log"},
    {"frmMenue", "menu"},
    {"frmMsg", "hang-up"},
    {"frmOberflaeche", "menu"},
    {"frmOverlay", "overlay"},
    {"frmPage", "web-page"},
    {"frmPfad", "folder"},
    {"frmReport", "report"},
    {"frmSkin", "main-window"},
    {"frmStatus", "status-window"},
    {"frmStatusgesamt", "overview"},
    {"frmText", "overlay-text"},
    {"frmWeb", "menu"},
};

}  // namespace

HelpKey::HelpKey(std::function<void(const QString& page)> ownOpen, QObject* parent)
    : QObject(parent), open(std::move(ownOpen)) {
    QCoreApplication::instance()->installEventFilter(this);
}

QString HelpKey::PageOf(const QWidget& control) {
    // A window without a page is a question that another one asks.
    for (const QWidget* at = control.window(); at;) {
        const QString page = pages.value(QString::fromLatin1(at->metaObject()->className()));
        if (!page.isEmpty()) return page;
        at = at->parentWidget() ? at->parentWidget()->window() : nullptr;
    }
    return {};
}

bool HelpKey::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto* control = qobject_cast<QWidget*>(object);
    if (!control || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::HelpContents))
        return false;
    open(PageOf(*control));
    return true;
}
