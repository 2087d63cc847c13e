#include "platform/service_contracts.h"

using Links = OnlineState::Links;

void ServiceContracts::dialsAnEntryOnce() {
    const auto modem = Modem();
    Dialer& dialer = modem->Phone();
    QList<int> handles;
    const auto dial = [&] { dialer.Dial("Stick", [&handles](int handle) { handles << handle; }); };
    dial();
    QTRY_COMPARE(modem->Dialled(), QStringList("Stick"));
    dial();  // is coming up
    QVERIFY(handles.isEmpty());
    modem->Answer(true);
    QTRY_COMPARE(handles.size(), 2);
    dial();  // stands
    QCOMPARE(handles.size(), 2);
    QTRY_COMPARE(handles.size(), 3);
    const int first = handles.constFirst();
    QVERIFY(first != 0);
    QCOMPARE(handles, QList<int>(3, first));
    QCOMPARE(modem->Dialled(), QStringList("Stick"));

    modem->Cut();
    QVERIFY(QTest::qWaitFor([&] { return dial(), modem->Dialled().size() == 2; }));
    QCOMPARE(handles.constLast(), first);
    modem->Answer(true);
    QTRY_VERIFY(handles.constLast() != first);
    dialer.HangUp(first);
    dialer.HangUp(handles.constLast());
    QTRY_COMPARE(modem->HungUp(), QStringList("Stick"));
    QCOMPARE(modem->Dialled(), QStringList({"Stick", "Stick"}));

    handles.clear();
    const int coming = dialer.Dial("Stick", [&handles](int handle) { handles << handle; });
    QTRY_COMPARE(modem->Dialled().size(), 3);
    dialer.HangUp(coming);
    QTRY_COMPARE(modem->HungUp().size(), 2);
    modem->Answer(true);
    dial();
    QTRY_COMPARE(modem->Dialled().size(), 4);
    QVERIFY2(handles.isEmpty(), "what was hung up is not reported any more");
}

void ServiceContracts::failedDialIsNotReported() {
    const auto modem = Modem();
    Dialer& dialer = modem->Phone();
    bool reported = false;
    for (int i = 0; i < 2; ++i) dialer.Dial("Stick", [&reported](int) { reported = true; });
    QTRY_COMPARE(modem->Dialled().size(), 1);
    modem->Answer(false);
    // Until the dialler has heard of it, the entry counts as coming up.
    int handle = 0;
    QVERIFY(QTest::qWaitFor([&] {
        dialer.Dial("Stick", [&handle](int now) { handle = now; });
        return modem->Dialled().size() == 2;
    }));
    QCOMPARE(handle, 0);
    modem->Answer(true);
    QTRY_VERIFY(handle != 0);
    QVERIFY(!reported);
}

void ServiceContracts::tellsOfChangesOnly() {
    const auto network = Network();
    const OnlineState& state = network->State();
    QList<std::pair<bool, Links>> told;
    QObject::connect(&state, &OnlineState::Changed, &state,
                     [&] { told.emplaceBack(state.Connected(), state.Connection()); });
    const QList<std::pair<bool, Links>> changes{
        {true, OnlineState::Lan}, {true, OnlineState::Modem}, {false, {}}};
    for (qsizetype count = 1; count <= changes.size(); ++count) {
        const auto [connected, links] = changes[count - 1];
        for (int i = 0; i < 2; ++i) network->Set(connected, links);
        QTRY_COMPARE(told, changes.first(count));
    }
}
