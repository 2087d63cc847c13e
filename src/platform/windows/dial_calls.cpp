#include "platform/windows/dialer.h"
#include "platform/windows/system.h"

#include <ras.h>
#include <raserror.h>
#include <wininet.h>

#include <algorithm>
#include <vector>

namespace {

// "Without asking the user", as the dial routine takes it.
constexpr DWORD unattended = 2;

// The list that one of the service's enumerations fills: Item has its own size in front.
template <class Item, class Enumerate>
std::vector<Item> Listed(Enumerate enumerate) {
    std::vector<Item> items(8);
    for (int tries = 0; tries < 3; ++tries) {
        items.front().dwSize = sizeof(Item);
        auto bytes = static_cast<DWORD>(items.size() * sizeof(Item));
        DWORD count = 0;
        const DWORD result = enumerate(items.data(), &bytes, &count);
        if (result == ERROR_SUCCESS) {
            items.resize(std::min<std::size_t>(count, items.size()));
            return items;
        }
        if (result != ERROR_BUFFER_TOO_SMALL) break;
        items.resize(bytes / sizeof(Item) + 1);
    }
    return {};
}

QStringList Entries() {
    QStringList names;
    const auto entries = Listed<RASENTRYNAMEW>([](auto* items, DWORD* bytes, DWORD* count) {
        return RasEnumEntriesW(nullptr, nullptr, items, bytes, count);
    });
    for (const RASENTRYNAMEW& entry : entries) names << QString::fromWCharArray(entry.szEntryName);
    return names;
}

// Those of the entry, also while they are dialled.
std::vector<RASCONNW> Connections(const QString& entry) {
    auto connections = Listed<RASCONNW>([](auto* items, DWORD* bytes, DWORD* count) {
        return RasEnumConnectionsW(items, bytes, count);
    });
    std::erase_if(connections, [&entry](const RASCONNW& connection) {
        return QString::fromWCharArray(connection.szEntryName) != entry;
    });
    return connections;
}

bool Stands(const QString& entry) {
    return !Connections(entry).empty();
}

quintptr Dial(const QString& entry) {
    std::wstring name = entry.toStdWString();
    DWORD_PTR connection = 0;
    // No window stands behind it: nothing is asked.
    const DWORD result = InternetDialW(nullptr, name.data(), unattended, &connection, 0);
    return result == ERROR_SUCCESS ? connection : 0;
}

void HangUp(quintptr connection) {
    InternetHangUp(connection, 0);
}

// The modem needs a moment; a program that ends before leaves the line open.
void GiveUp(const QString& entry) {
    constexpr int looks = 30;
    constexpr DWORD betweenLooks = 100;  // milliseconds
    for (const RASCONNW& connection : Connections(entry)) {
        if (RasHangUpW(connection.hrasconn) != ERROR_SUCCESS) continue;
        RASCONNSTATUSW status{};
        status.dwSize = sizeof status;
        for (int i = 0; i < looks; ++i) {
            if (RasGetConnectStatusW(connection.hrasconn, &status) == ERROR_INVALID_HANDLE) break;
            Sleep(betweenLooks);
        }
    }
}

}  // namespace

DialCalls SystemDialCalls() {
    return {.Entries = Entries, .Stands = Stands, .Dial = Dial, .HangUp = HangUp, .GiveUp = GiveUp};
}
