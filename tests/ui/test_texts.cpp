#include "base/status_hub.h"
#include "support/file_bytes.h"
#include "ui/guide/guide.h"
#include "ui/shell_fixture.h"
#include "ui/skin/picture_box.h"
#include "ui/skin/picture_button.h"
#include "ui/texts/ftp_examples.h"
#include "ui/texts/languages.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QRegularExpression>
#include <QTest>

using enum Texts::Language;

namespace {

// Every "section.key" of a language's file with the text.
QMap<QString, QString> AllTexts(Texts::Language language) {
    QMap<QString, QString> all;
    QString section;
    const ProfileText file(Texts::File(language));
    for (const QString& line : QString::fromUtf8(Texts::File(language)).split(u'\n')) {
        if (line.startsWith(u'[')) section = line.mid(1).chopped(1);
        if (line.startsWith(u'[') || line.startsWith(u';') || line.isEmpty()) continue;
        const QString key = line.section(u'=', 0, 0);
        all[section + "." + key] = file.Value(section, key).value_or(QString());
    }
    return all;
}

QStringList Places(const QString& text) {
    QStringList places;
    auto found = QRegularExpression("%[0-9]").globalMatch(text);
    while (found.hasNext()) places << found.next().captured();
    places.sort();
    return places;
}

}  // namespace

class TestTexts : public QObject {
    Q_OBJECT

  private slots:
    void TheThreeFilesHaveTheSameTexts() {
        const QMap<QString, QString> english = AllTexts(English);
        QVERIFY(english.size() > 200);
        for (const Texts::Language language : {English, German, French}) {
            const QMap<QString, QString> other = AllTexts(language);
            QCOMPARE(other.keys(), english.keys());
            for (auto each = other.begin(); each != other.end(); ++each) {
                QVERIFY2(!each.value().trimmed().isEmpty(), qPrintable(each.key()));
                QCOMPARE(Places(each.value()), Places(english[each.key()]));
            }
        }
        QCOMPARE(Texts(German).Get("frmPfad", "Nothing"), "?frmPfad.Nothing");
    }

    void Wording() {
        int rows = 0;
        for (const QString& row : QString::fromUtf8(ReadBytes(STILLPOST_WORDING)).split(u'\n')) {
            if (row.startsWith(u'#') || row.isEmpty()) continue;
            const QString name = row.section(" = \"", 0, 0);
            QStringList found;
            for (const Texts::Language language : {English, German, French})
                found << Texts(language).Get(name.section(u'.', 0, 0), name.section(u'.', 1));
            QCOMPARE(found, row.section(" = \"", 1).chopped(1).split("\" | \""));
            ++rows;
        }
        QVERIFY(rows > 100);
    }

    void ExamplesSpeakTheLanguageAndWhatWasTypedStays() {
        const FtpExamples german = FtpExamplesOf(German);
        const FtpExamples shown = WithExamplesOf(French, {german.Server, german.Path, "me"});
        QCOMPARE(shown.Server, FtpExamplesOf(French).Server);
        QCOMPARE(shown.Path, FtpExamplesOf(French).Path);
        QCOMPARE(shown.User, "me");
    }

    // No word that is no language changes the one in use, and messages keep the fields of the
    // moment.
    void WhileRunning() {
        ShellFixture program;
        program.Begin();
        Languages& tables = program.Windows->LanguageTables;
        QString path = "first";
        tables.SetFields([&path] { return MessageFields{path, {}}; });
        tables.Choose(French);
        path = "second";
        QCOMPARE(program.Setting("Einstellungen", "Sprache"), "franz");
        QCOMPARE(tables.Messages().MsgOfflinePathMissing,
                 "Le répertoire first n'éxiste pas1\r\nS.v.p. vérifiez votre entrée!");
        program.Set("Einstellungen", "Sprache", "klingon");
        program.Core->LoadSettings();
        const MainState& state = program.Core->State;
        QVERIFY(state.LangFrench && !state.LangEnglish && !state.LangGerman);
        const frmSkin& window = program.Windows->MainWindow;
        QCOMPARE(window.btnStart->text(), "Démarrer");
        QCOMPARE(window.btnStart->toolTip(), "Publier des images (F5)");
        QCOMPARE(window.cbDriver->currentText(), "Pas de conducteur vidéo disponible!");
        QCOMPARE(window.btnStart->shortcut(), QKeySequence(Qt::Key_F5));
    }

    void EveryButtonHasAName() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        QSet<QString> starts;
        for (const Texts::Language language : {English, German, French}) {
            shell.LanguageTables.Choose(language);
            shell.FirstSteps.Open();
            int buttons = 0;
            for (QWidget* widget : QApplication::allWidgets()) {
                const bool shown = widget->isVisibleTo(widget->window());
                if (!shown || !qobject_cast<QAbstractButton*>(widget)) continue;
                const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
                const QString name = seen->text(QAccessible::Name);
                const QString place = QLatin1String(widget->window()->metaObject()->className());
                static const QRegularExpression word("^[^?].*\\w");
                QVERIFY2(name.contains(word), qPrintable(place + ": " + name));
                ++buttons;
            }

            QVERIFY(buttons > 100);
            starts << QAccessible::queryAccessibleInterface(shell.MainWindow.btnStart)
                          ->text(QAccessible::Name);
            shell.FirstSteps.reject();
        }
        QCOMPARE(starts.size(), 2);  // English and German say the same
    }

    // As assistive programs see it.
    void WhatChangesIsTold() {
        ShellFixture program;
        program.Begin();
        const frmSkin& window = program.Windows->MainWindow;
        const auto name = [](QObject* object) {
            return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name);
        };
        QCOMPARE(name(window.LEDLeft), "Connection: Offline");
        program.Core->Display.ShowOnline(true);
        program.Core->Display.ShowStatus("Send File");
        program.Core->Run.Enter(RunState::Sending);
        QCOMPARE(name(window.LEDLeft), "Connection: Online");
        QCOMPARE(name(window.LEDReigth), "Upload: Sending a picture");
        QCOMPARE(name(window.lblStatus), "Status: Send File, Online");
    }
};

QTEST_MAIN(TestTexts)
#include "test_texts.moc"
