#include "support/data_rows.h"
#include "ui/menu/frm_menue.h"
#include "ui/shell_fixture.h"
#include "ui/skin/picture_button.h"
#include "ui/texts/ftp_examples.h"
#include "ui/texts/languages.h"
#include "ui/tray/tray1.h"
#include "ui/widgets/menu_row.h"

#include <QComboBox>
#include <QRegularExpression>

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

    // Odd spelling, blanks at the ends and rows left in another language are meant to be so.
    void Verbatim_data() {
        Rows<QString, QStringList>(
            {{"frmPfad.Title", {" search Path", " Pfad suchen", " Chercher chemin"}},
             {"frmFTP.User", {"User-Name:", "User-Name:", "UNom d'utilisateur:"}},
             {"frmFTP.Path", {"Path:", "Verzeichniss:", "Répertoire/dossier:"}},
             {"frmFTP.HistoryOption",
              {"history upload every 10 pictures", "Historie upload aller 10 Bilder",
               "history upload every 10 pictures"}},
             {"frmCam.Save", {"Save", "Speichern", "Enregister"}},
             {"frmFTP.OfflineUpload",
              {"Upload 'Offline-Picture' as last picture", "Bei Abwahl 'Offline - Bild' senden",
               "Avant déconnection envoyer image offline"}},
             {"frmCam.ArchiveOption",
              {"Pictures locally archive (date && time format):",
               "Bilder lokal archivieren (Datum- && Zeit-Format):",
               "Des images archiver localement (date && temps format):"}},
             {"frmOverlay.EffectHeading",
              {" - Overlay Effect - ", " - Overlay Effekt - ", " - Effets Overlay - "}},
             {"frmBild.DeleteList", {"delete List ", "Liste Löschen ", "Effacer liste"}},
             {"frmText.RowSuffix", {". Row:", ". Zeile:", ". Ligne:"}}});
    }

    void Verbatim() {
        const auto [name, expected] = Row<QString, QStringList>();
        Texts texts(English);
        QStringList found;
        for (const Texts::Language language : {English, German, French}) {
            texts.SetLanguage(language);
            found << texts.Get(name.section(u'.', 0, 0), name.section(u'.', 1));
        }
        QCOMPARE(found, expected);
    }

    void Messages() {
        const auto in = [](Texts::Language language) {
            return ComposeMessages(Texts(language), {"C:\\Off", "C:\\Arc"});
        };
        QCOMPARE(in(English).MsgOfflinePathMissing,
                 "The directory C:\\Off does not exist!\r\nPlease you check your input!");
        QCOMPARE(in(French).MsgOfflinePathMissing,
                 "Le répertoire C:\\Off n'éxiste pas1\r\nS.v.p. vérifiez votre entrée!");
        QCOMPARE(in(French).MsgCamPathMissing,
                 "La liste C:\\Arc n'existe pas!\r\nVeuillez réexaminer votre entrée!");
        QCOMPARE(in(English).MsgAutostartWarning,
                 "Note! In the case of activation of this function the program is loaded,\r\nwith "
                 "the system start (PC) and the Upload is started.\r\n\r\nThis can cause "
                 "involuntary costs!");
        QCOMPARE(in(French).MsgOfflineSize,
                 "Votre image offline est plus petite que celle de la caméra!\r\nSi vous utilisez "
                 "le filtre offline, la taille de l'image doit être identique!");
        QCOMPARE(in(German).MsgOverlaySize, "Ihr Overlay - Bild ist größer als das Kamera - Bild!");
        QCOMPARE(RowLabel(Texts(German), 1), "2. Zeile:");
    }

    void Examples_data() {
        const Rows<Texts::Language, QStringList, QStringList> row;
        const QString german = FtpExamplesOf(German).Server;
        const QString french = FtpExamplesOf(French).Server;
        const QString english = FtpExamplesOf(English).Server;
        row("German to French", French,
            QStringList{german, "Verzeichniss/Verzeichniss", "User-Name"},
            QStringList{french, "Répertoire/Répertoire", "UNom d'utilisateur"});
        row("to English", English, QStringList{french, "Liste/Liste", "Utilisateur-nom"},
            QStringList{english, "Path/Path", "User-Name"});
        row("to German", German, QStringList{english, "Path/Path", "Utilisateur-nom"},
            QStringList{german, "Verzeichniss/Verzeichniss", "User-Name"});
        const QStringList typed{"ftp.mine.org", "Répertoire/Répertoire", "UNom d'utilisateur"};
        row("what was typed, and French that nobody knows, stays", English, typed, typed);
    }

    void Examples() {
        const auto [language, fields, expected] = Row<Texts::Language, QStringList, QStringList>();
        const FtpExamples now = WithExamplesOf(language, {fields[0], fields[1], fields[2]});
        QCOMPARE(QStringList({now.Server, now.Path, now.User}), expected);
    }

    void AtTheStart_data() {
        const Rows<QString, QString, QString> row;
        row("English", "english", "Language", "No Video Capture Device!");
        row("German", "deutsch", "Sprache", "Kein Video-Treiber verfügbar!");
        row("French", "franz", "Langue", "Pas de conducteur vidéo disponible!");
        row("unknown", "Deutsch", "Language", "No Video Capture Device!");
    }

    void AtTheStart() {
        const auto [setting, menu, noCamera] = Row<QString, QString, QString>();
        ShellFixture program;
        program.Set("Einstellungen", "Sprache", setting);
        program.Begin();
        QCOMPARE(program.Windows->Menu.Label1[1]->text(), menu);
        QCOMPARE(program.Windows->MainWindow.cbDriver->currentText(), noCamera);
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
        QVERIFY(tables.Messages().MsgOfflinePathMissing.contains("first"));
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
};

QTEST_MAIN(TestTexts)
#include "test_texts.moc"
