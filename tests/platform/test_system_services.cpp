#include "platform/linux/sound.h"
#include "platform/termination.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

class TestSystemServices : public QObject {
    Q_OBJECT

  private slots:
    void signalRequestsTermination_data();
    void signalRequestsTermination();
    void nohupIsRespected();
    void playsThroughFirstPlayer_data();
    void playsThroughFirstPlayer();
};

void TestSystemServices::signalRequestsTermination_data() {
    QTest::addColumn<int>("number");
    QTest::addRow("SIGTERM") << SIGTERM;
    QTest::addRow("SIGINT") << SIGINT;
    QTest::addRow("SIGHUP") << SIGHUP;
}

void TestSystemServices::signalRequestsTermination() {
    QFETCH(const int, number);
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    {
        const auto termination = Termination::Create();
        QSignalSpy requests(termination.get(), &Termination::Requested);
        std::raise(number);
        QCOMPARE(requests.count(), 0);  // never from inside the handler
        QTRY_COMPARE(requests.count(), 1);
        std::raise(number);
        QTRY_COMPARE(requests.count(), 2);
    }
    struct sigaction after {};
    sigaction(number, nullptr, &after);
    QVERIFY(after.sa_handler == before.sa_handler);
}

void TestSystemServices::nohupIsRespected() {
    const auto before = std::signal(SIGHUP, SIG_IGN);
    {
        const auto termination = Termination::Create();
        QSignalSpy requests(termination.get(), &Termination::Requested);
        std::raise(SIGHUP);
        QCoreApplication::processEvents();
        QCOMPARE(requests.count(), 0);
        std::raise(SIGTERM);
        QTRY_COMPARE(requests.count(), 1);
    }
    std::signal(SIGHUP, before);
}

void TestSystemServices::playsThroughFirstPlayer_data() {
    QTest::addColumn<QStringList>("players");
    QTest::addColumn<QString>("used");
    QTest::addRow("all") << QStringList{"aplay", "paplay", "pw-play"} << "pw-play";
    QTest::addRow("no PipeWire") << QStringList{"aplay", "paplay"} << "paplay";
    QTest::addRow("ALSA only") << QStringList{"aplay"} << "aplay";
}

void TestSystemServices::playsThroughFirstPlayer() {
    QFETCH(const QStringList, players);
    QFETCH(const QString, used);
    QTemporaryDir folder;
    const QString wave = folder.filePath("a $(click) 'now'.wav");
    const QString note = folder.filePath("note");
    for (const QString& player : players) {
        QFile script(folder.filePath(player));
        QVERIFY(script.open(QFile::WriteOnly));
        script.write(QString("#!/bin/sh\necho \"%1 $# $1\" >> '%2'\n").arg(player, note).toUtf8());
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toLocal8Bit());
    LinuxSound sound;
    sound.Play(wave);  // not there yet: nothing is started
    QVERIFY(QFile(wave).open(QFile::WriteOnly));
    sound.Play(wave);
    qputenv("PATH", path);

    const auto noted = [&note] {
        QFile file(note);
        return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    QTRY_VERIFY(noted().endsWith('\n'));
    QCOMPARE(noted(), QString("%1 1 %2\n").arg(used, wave));
}

QTEST_GUILESS_MAIN(TestSystemServices)
#include "test_system_services.moc"
