#include "base/status_hub.h"

#include <algorithm>

void StatusHub::Add(StatusDisplay& display) {
    displays.push_back(&display);
}

void StatusHub::Remove(StatusDisplay& display) {
    std::erase(displays, &display);
}

bool StatusHub::InUse() const {
    return std::any_of(displays.begin(), displays.end(), [](auto* each) { return each->InUse(); });
}

void StatusHub::Each(const std::function<void(StatusDisplay&)>& show) {
    for (StatusDisplay* display : displays)
        if (display->InUse()) show(*display);
}

void StatusHub::ShowStatus(const QString& text) {
    Each([&](auto& each) { each.ShowStatus(text); });
}

void StatusHub::ShowTimeOutLabel(std::optional<int> seconds) {
    Each([&](auto& each) { each.ShowTimeOutLabel(seconds); });
}

void StatusHub::ShowTimeOutGauge(std::optional<int> seconds) {
    Each([&](auto& each) { each.ShowTimeOutGauge(seconds); });
}

void StatusHub::ShowOnline(bool online) {
    Each([&](auto& each) { each.ShowOnline(online); });
}

void StatusHub::ShowRecording(const QString& text) {
    Each([&](auto& each) { each.ShowRecording(text); });
}

void StatusHub::ShowUpload(int percent) {
    Each([&](auto& each) { each.ShowUpload(percent); });
}

void StatusHub::ShowPictureCount(const QString& text) {
    Each([&](auto& each) { each.ShowPictureCount(text); });
}

void StatusHub::ShowMegabytes(const QString& text) {
    Each([&](auto& each) { each.ShowMegabytes(text); });
}

void StatusHub::ResetRunningTime() {
    Each([](auto& each) { each.ResetRunningTime(); });
}

void StatusHub::LogCommand(const QString& command) {
    Each([&](auto& each) { each.LogCommand(command); });
}

void StatusHub::LogReply(const QString& reply) {
    Each([&](auto& each) { each.LogReply(reply); });
}
