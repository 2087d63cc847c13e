#include "core/console_display.h"

#include <QStringList>

ConsoleDisplay::ConsoleDisplay(const Clock& ownClock, std::function<void(const QString&)> ownPrint)
    : clock(ownClock), print(std::move(ownPrint)) {}

void ConsoleDisplay::Print(const QString& mark, const QString& text) {
    lastStatus.clear();
    const QString time = clock.Now().time().toString("hh:mm:ss.zzz");
    QString clean = text;
    clean.remove(u'\r');
    for (const QString& line : clean.split(u'\n', Qt::SkipEmptyParts))
        print(time + " " + mark + " " + line);
}

void ConsoleDisplay::ShowStatus(const QString& text) {
    // A blend tells of every few columns that it works on.
    if (text == lastStatus) return;
    Print("--", text);
    lastStatus = text;
}

void ConsoleDisplay::ShowOnline(bool isOnline) {
    if (online == isOnline) return;
    online = isOnline;
    Print("--", isOnline ? QString("online") : QString("offline"));
}

void ConsoleDisplay::ShowPictureCount(const QString& text) {
    Print("--", text);
}

void ConsoleDisplay::ShowMegabytes(const QString& text) {
    Print("--", text);
}

void ConsoleDisplay::LogCommand(const QString& command) {
    Print("->", command);
}

void ConsoleDisplay::LogReply(const QString& reply) {
    Print("<-", reply);
}

void ConsoleDisplay::LogState(const QString& state) {
    Print("--", "state: " + state);
}
