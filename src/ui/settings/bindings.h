#pragma once

#include "base/profile_file.h"

#include <QObject>

#include <functional>

class QGroupBox;
class QLabel;
class QWidget;
class Texts;

// What belongs to a control of a window. The control's value is its user property (whether it is
// checked, its text, its number), of a list the place of the chosen line.
struct Binding {
    QString Key = {};   // of the setting; empty: the control has none, or its window sees to it
    QString Text = {};  // name of the caption in the window's texts; empty: the key's
    QString Help = {};  // name of the tool tip there; empty: the caption's with "Help" behind it
    QString Section = QStringLiteral("Einstellungen");  // of the settings file
    QString Missing = {};  // what is shown for a missing value; empty: the setting's default
    int Items = 0;  // lines of a list, which are the texts named after the caption: "Quality0" ...
    std::function<QString()> Caption = {};  // when it is put together, in place of Text
    std::function<bool()> Enabled = {};     // empty: always
    // For a control whose value is no property: shows what the file says, the default when it says
    // nothing, and gives what is to be written.
    std::function<void(const QString&)> Show = {};
    std::function<QString()> Value = {};
};

// The controls of a window with their captions and tool tips in the language in use and with the
// settings they stand for: whoever adds one has it loaded, saved, named, explained, switched on and
// off, kept in the range of its setting and reached with the Tab key, in the order of adding.
class Bindings : public QObject {
    Q_OBJECT

  public:
    // The texts outlive this. section: of the texts, the window's name.
    Bindings(const Texts& ownWords, const QString& ownSection);

    // caption: the label in front of the control; without one a button has the caption itself, and
    // other controls, and buttons that show "…", have it for screen readers only. Only a label is
    // known by its text alone.
    void Add(QWidget* control, const Binding& binding, QLabel* caption = nullptr);
    void Add(QWidget* control, const QString& key) { Add(control, Binding{.Key = key}); }
    // A new frame with that title.
    [[nodiscard]] QGroupBox* Frame(const QString& title);

    // Sets all texts; to be called when the language has changed, too.
    void ShowTexts();
    // Puts the settings of the file into the controls.
    void ShowSettings(const QString& file);
    // What the controls say, in the order of adding.
    [[nodiscard]] QList<ProfileEntry> Entries() const;
    // The first field whose text its setting does not take; none: nullptr.
    [[nodiscard]] QWidget* Unfinished() const;
    // The Tab key goes through the controls in the order of adding, then to `behind`.
    void SetTabOrder(QWidget* behind) const;
    // Looks again which controls are switched on; done by itself whenever a value changes.
    void ApplyEnabled() const;

    [[nodiscard]] QString Text(const QString& key) const;

  signals:
    // The operator has changed a value.
    void Edited();
    // For texts that are put together, which are to be set now.
    void TextsShown();

  private slots:
    void Note();

  private:
    struct Bound {
        QWidget* Control;
        QLabel* Caption;
        Binding What;
    };
    static void ShowSetting(const Bound& bound, const QString& file);
    void ShowText(const Bound& bound) const;

    const Texts& words;
    QString section;
    QList<Bound> all;
    bool showing = false;
};
