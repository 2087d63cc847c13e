#include "ui/shell_fixture.h"

#include "ui/menu/frm_menue.h"
#include "ui/skin/picture_button.h"

#include <QTest>

ShellFixture::ShellFixture() = default;

ShellFixture::~ShellFixture() {
    Windows.reset();
}

void ShellFixture::Begin() {
    Windows.reset();
    MakeProgram();
    Windows = std::make_unique<Shell>(*Core, QStringList{Folder.path()}, Boxes,
                                      [this](const QUrl& address, const auto& failed) {
                                          Opened << address;
                                          if (!SystemOpens) failed();
                                      });
    QObject::connect(Core.get(), &Program::Loaded, Windows.get(), &Shell::Show);
    Core->Load(false);
}

frmMenue& ShellFixture::OpenMenu() {
    Windows->MainWindow.activateWindow();
    (void)QTest::qWaitForWindowActive(&Windows->MainWindow);
    QTest::keyClick(Windows->MainWindow.btnOptions, Qt::Key_Return);
    (void)QTest::qWaitForWindowActive(&Windows->Menu);
    return Windows->Menu;
}
