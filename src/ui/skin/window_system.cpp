#include "ui/skin/window_system.h"

#include <QGuiApplication>

namespace {

bool IsWayland() {
    return QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

}  // namespace

bool WindowSystem::PlacesWindows() {
    return !IsWayland();
}

bool WindowSystem::CutsWindows() {
    return !IsWayland();
}

Qt::WindowFlags WindowSystem::MenuFlags() {
    return (PlacesWindows() ? Qt::Tool : Qt::Popup) | Qt::FramelessWindowHint;
}
