#pragma once

#include "net/publishing/connection_trial.h"
#include "ui/settings/ftp/way_fields.h"
#include "ui/texts/ftp_examples.h"
#include "ui/widgets/number_box.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <optional>

class Bindings;
class QAction;

// Where pictures go: a server with its account, or a folder of this computer. Examples stand in
// empty fields as hints only, so that none can be saved or tried by mistake.
class FtpAccessGroup : public QGroupBox {
    Q_OBJECT

  public:
    // bindings: of the window. trial: stands below the fields, if any.
    FtpAccessGroup(Bindings& ownBindings, const Texts& ownWords, QWidget* trial);

    QRadioButton* optServer = new QRadioButton;
    QRadioButton* optLocal = new QRadioButton;
    QLineEdit* txtServer = new QLineEdit;
    QLineEdit* txtVerzeichnis = new QLineEdit;
    QPushButton* btnFolder = new QPushButton;
    QLineEdit* txtUser = new QLineEdit;
    QLineEdit* txtPW = new QLineEdit;
    QPushButton* btnShowPW = new QPushButton;
    NumberBox* txtPort = new NumberBox;
    WayFields* Way = nullptr;

    // What was typed or pasted as a server: the name of the local mode means the local mode, the
    // parts of an address go into their own fields.
    void AdoptTyped();
    // The same for a written one: what stands in another field stays there.
    void AdoptWritten();

    // What is wrong with what stands in the fields.
    struct Fault {
        QLineEdit* Field;
        QString Note;
        bool FolderMissing = false;  // of the local mode
    };
    // Nothing when it can be saved, which it can without a server.
    // programFolder: where a folder that is no full path begins.
    [[nodiscard]] std::optional<Fault> FindFault(const QString& programFolder) const;
    // The same of a trial, which needs a server.
    [[nodiscard]] std::optional<Fault> FindTrialFault(const QString& programFolder) const;
    // What a trial of the fields is to try; how pictures are replaced the caller fills in.
    [[nodiscard]] ServerAccess Wanted(const QString& programFolder) const;
    // Marks the field that a trial has found wrong and goes there. What it tells about the server
    // alone marks nothing; so does success.
    void Mark(ServerFault result);
    // Changes what a trial has offered to change.
    void Take(const TrialOutcome& outcome);

    [[nodiscard]] bool Local() const;
    // As the settings have them: "Local" for a folder, which ends in a separator then.
    [[nodiscard]] QString Server() const;
    [[nodiscard]] QString Folder() const;

  signals:
    // What a trial would try has changed.
    void Edited();
    // Other fields are shown: captions and their letters are to be set anew.
    void RowsChanged();

  private:
    void LayOut(QWidget* trial);
    void AdoptAddress(bool overwrite);
    void ShowServer(const QString& server);
    void SwitchFolder();
    void ShowMode();
    void ChooseFolder();
    void Unmark();
    [[nodiscard]] QString FullFolder(const QString& programFolder) const;
    // The key of the text on what is wrong with the server; empty when nothing is.
    [[nodiscard]] QString AddressFault() const;
    void FollowWay(Protocol former);
    [[nodiscard]] QString WayText(const QString& key) const;
    [[nodiscard]] QLineEdit* FieldOf(ServerFault fault) const;
    [[nodiscard]] bool ServerIsExample() const;
    [[nodiscard]] QString Text(const QString& key) const { return words.Get("frmFTP", key); }

    Bindings& bindings;
    const Texts& words;
    FtpExamples examples;
    QString otherFolder;  // of the mode that is not shown
    QLineEdit* marked = nullptr;
    QAction* mark = nullptr;
};
