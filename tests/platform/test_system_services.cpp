#include "platform/linux/sound.h"
#include "platform/termination.h"
#include "platform/user_section.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>

class TestSystemServices : public QObject {
    Q_OBJECT

  private slots:
    void signalRequestsTermination_data() {
        const Rows<int, bool> row;
        row("SIGTERM", SIGTERM, true);
        row("SIGHUP", SIGHUP, true);
        row("SIGUSR1", SIGUSR1, false);
    }
    void signalRequestsTermination() {
        const auto [number, ends] = Row<int, bool>();
        struct sigaction before {};
        sigaction(number, nullptr, &before);
        {
            const auto termination = Termination::Create();
            QSignalSpy requests(termination.get(),
                                ends ? &Termination::Requested : &Termination::StopRequested);
            QSignalSpy others(termination.get(),
                              ends ? &Termination::StopRequested : &Termination::Requested);
            std::raise(number);
            QCOMPARE(requests.count(), 0);  // never from inside the handler
            QTRY_COMPARE(requests.count(), 1);
            std::raise(number);
            QTRY_COMPARE(requests.count(), 2);
            QCOMPARE(others.count(), 0);
        }
        struct sigaction after {};
        sigaction(number, nullptr, &after);
        QVERIFY(after.sa_handler == before.sa_handler);
    }

    void nohupIsRespected() {
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

    void userStoreIsAFile() {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        const QString section(QChar(u'\0'));
        OpenUserSection("FTP Control 1.01", section)->setValue("LastErrorCode", "550");
        const QSettings file(folder.filePath("Stillpost/FTP Control 1.01.ini"),
                             QSettings::IniFormat);
        QCOMPARE(file.childGroups(), QStringList(section));
    }

    void playsThroughFirstPlayer() {
        QTemporaryDir folder;
        const QString wave = folder.filePath("a $(click) 'now'.wav");
        const QString note = folder.filePath("note");
        for (const QString& player : QStringList{"aplay", "paplay"}) {
            const QString script = folder.filePath(player);
            const auto text = QString("#!/bin/sh\necho \"%1 $# $1\" >> '%2'\n").arg(player, note);
            QVERIFY(WriteBytes(script, text.toUtf8()));
            QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", folder.path().toLocal8Bit());
        LinuxSound sound;
        sound.Play(wave);  // not there yet: nothing is started
        QVERIFY(WriteBytes(wave, {}));
        sound.Play(wave);
        qputenv("PATH", path);

        QTRY_VERIFY(ReadBytes(note).endsWith('\n'));
        QCOMPARE(QString::fromUtf8(ReadBytes(note)), QString("paplay 1 %1\n").arg(wave));
    }
};

QTEST_GUILESS_MAIN(TestSystemServices)
#include "test_system_services.moc"
