#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <functional>

class Bindings;
class SettingsRows;

// The protocol that pictures are sent by, and the fields that only some of them need: those of the
// others are not shown.
class WayFields : public QObject {
    Q_OBJECT

  public:
    // local: whether the pictures go into a folder of this computer.
    WayFields(Bindings& ownBindings, SettingsRows& ownRows, std::function<bool()> ownLocal);

    QComboBox* cbProtocol = new QComboBox;
    QCheckBox* chkPassive = new QCheckBox;
    QLineEdit* txtKeyFile = new QLineEdit;
    QPushButton* btnKeyFile = new QPushButton(QStringLiteral("…"));
    QLineEdit* txtBucket = new QLineEdit;
    QLineEdit* txtRegion = new QLineEdit;
    QLineEdit* txtCacheSeconds = new QLineEdit;
    QLineEdit* txtTrusted = new QLineEdit;

    // The row of the protocol, and later those of the fields.
    void AddChoice();
    void AddFields();

    [[nodiscard]] Protocol Way() const;
    // The setting for it; a word of the file that names none stays until another is chosen.
    [[nodiscard]] QString Setting() const;
    void Choose(const QString& setting);

    void Fill(ServerAccess& access) const;
    // The field that most likely makes a trial end like that; none: none of these.
    [[nodiscard]] QLineEdit* FieldOf(ServerFault fault) const;
    // Shows what the way needs.
    void ShowFields();

  signals:
    void Edited();
    // Another way was chosen in place of that one.
    void WayChanged(Protocol former);

  private:
    void Note();
    void ChooseKeyFile();

    Bindings& bindings;
    SettingsRows& rows;
    std::function<bool()> local;
    Protocol shown = Protocol::Ftp;
    QString unknown;  // what the file says in place of a protocol
};
