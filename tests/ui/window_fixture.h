#pragma once

#include "core/program.h"
#include "support/cycle_fixture.h"
#include "ui/main/frm_skin.h"

#include <QTemporaryDir>
#include <QUrl>

// Skins of plain colours in a folder.
class SkinMaker {
  public:
    static inline const QColor CheckColour = QColor(200, 40, 40);

    // A skin's files: pictures of `colour` (hover pictures, lit LEDs of the same, lighter), the
    // main window 400 x 320 pixels with its corners cut away, and a layout file.
    static void Make(const QString& folder, const QColor& colour);
    static void Write(const QString& path, const QByteArray& bytes);
    static void Picture(const QString& path, const QSize& size, const QColor& colour);
    static void Layout(const QString& folder, const QString& section, const QString& key,
                       const QString& value);
};

// The program with its main window in a temporary program folder that has the skins "Default"
// (blue) and "Green", of which Green is chosen.
class WindowFixture {
  public:
    WindowFixture();
    ~WindowFixture();

    // The program alone, not loaded.
    void MakeProgram();
    // Loads the program and shows the window; a second call is a second start.
    void Start();
    [[nodiscard]] QString Skin(const QString& name, const QString& file = {}) const {
        return Folder.filePath("Skins/" + name + "/" + file);
    }
    [[nodiscard]] QString Setting(const QString& section, const QString& key) const;
    void Set(const QString& section, const QString& key, const QString& value) const;

    TestClock Time;
    QTemporaryDir Folder;
    TestPlatform System;
    AnsweringBoxes Boxes;
    RecordingPage Page;
    SkinFolders Skins{{Folder.path()}};
    std::unique_ptr<Program> Core;
    std::unique_ptr<frmSkin> Window;
};

// Drops something on a control; false when it does not take it.
bool Drop(QWidget& target, const QList<QUrl>& addresses, const QString& text = {});
// The colour in the middle of what a widget draws of itself.
[[nodiscard]] QColor MiddleColour(QWidget& widget);
// Whether two colours differ by no more than JPEG makes of them.
[[nodiscard]] bool Alike(const QColor& one, const QColor& other);
