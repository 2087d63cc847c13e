#include "ui/settings/camera/camera_form.h"

#include "base/paths.h"
#include "base/profile_file.h"
#include "camera/camera_list.h"
#include "camera/test_picture.h"
#include "ui/settings/camera/camera_address.h"
#include "ui/settings/settings_rows.h"
#include "ui/widgets/file_chooser.h"
#include "ui/widgets/mnemonics.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <array>

namespace {

const QString testScheme = QStringLiteral("test:");

// In the order of the list.
constexpr std::array kinds{CaptureKind::Network, CaptureKind::File, CaptureKind::Test};

}  // namespace

WrittenCamera WrittenCamera::FromLine(const QString& line) {
    const qsizetype bar = line.indexOf(u'|');
    WrittenCamera camera;
    camera.Name = line.left(qMax<qsizetype>(bar, 0)).trimmed();
    camera.Address = line.mid(bar + 1).trimmed();
    camera.FormerName = camera.Name;
    camera.Kind = KindOfAddress(camera.Address);
    if (camera.Kind == CaptureKind::Network)
        camera.Address = CameraAddress::Encoded(camera.Address);
    return camera;
}

QString WrittenCamera::AddressFault() const {
    const bool network = Kind == CaptureKind::Network;
    if (Kind == CaptureKind::Test && TestPicture::ParseAddress(Address).isEmpty()) return "BadSize";
    if (Address.isEmpty()) return "AddressMissing";
    if (network && !Address.contains("://")) return "NoScheme";
    if (network && CameraAddress::Split(Address).Place.endsWith("://")) return "AddressMissing";
    if (Line().size() > LongestSetting) return "TooLong";
    return {};
}

CameraForm::CameraForm(Bindings& ownBindings)
    : txtName(new QLineEdit),
      cbKind(new QComboBox),
      txtAddress(new QLineEdit),
      btnFile(new QPushButton(QStringLiteral("…"))),
      txtUser(new QLineEdit),
      txtPassword(new QLineEdit),
      bindings(ownBindings),
      rows(new SettingsRows(ownBindings, this)),
      lblAddress(new QLabel) {
    LayOut();
    Connect();
}

void CameraForm::LayOut() {
    rows->setContentsMargins({});
    rows->Add(txtName, {.Text = "Name"});
    rows->Add(cbKind, {.Text = "Kind", .Items = kinds.size()});
    rows->AddLine(lblAddress, txtAddress, btnFile);
    bindings.Add(txtAddress, {.Text = "Address"}, lblAddress);
    bindings.Add(btnFile, {.Text = "ChooseFile"});
    rows->Add(txtUser, {.Text = "User"});
    rows->Add(txtPassword, {.Text = "Password"});
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);  // no list is to be cut off
    txtPassword->setEchoMode(QLineEdit::Password);
    constexpr int usualLetters = 34;  // of an address
    txtAddress->setMinimumWidth(fontMetrics().averageCharWidth() * usualLetters);
}

void CameraForm::Connect() {
    for (QLineEdit* field : {txtName, txtAddress, txtUser, txtPassword})
        connect(field, &QLineEdit::textEdited, this, &CameraForm::Changed);
    connect(txtAddress, &QLineEdit::editingFinished, this, &CameraForm::TakeApart);
    connect(cbKind, &QComboBox::activated, this, &CameraForm::ChangeKind);
    connect(btnFile, &QPushButton::clicked, this, &CameraForm::ChooseFile);
    connect(&bindings, &Bindings::TextsShown, this, &CameraForm::FitToKind);
}

CaptureKind CameraForm::Kind() const {
    return kinds.at(static_cast<std::size_t>(qMax(0, cbKind->currentIndex())));
}

void CameraForm::Show(const WrittenCamera& camera) {
    shown = camera;
    const CaptureKind kind = camera.Kind;
    cbKind->setCurrentIndex(static_cast<int>(std::ranges::find(kinds, kind) - kinds.begin()));
    const CameraAddress parts = kind == CaptureKind::Network
                                    ? CameraAddress::Split(camera.Address)
                                    : CameraAddress{camera.Address, {}, {}};
    txtName->setText(camera.Name);
    txtAddress->setText(kind == CaptureKind::Test ? camera.Address.mid(testScheme.size())
                                                  : parts.Place);
    txtUser->setText(parts.User);
    txtPassword->setText(parts.Password);
    FitToKind();
}

WrittenCamera CameraForm::Camera() const {
    WrittenCamera camera = shown;
    camera.Name = txtName->text().trimmed();
    camera.Address = Address();
    camera.Kind = Kind();
    return camera;
}

// As it was written as long as nobody has changed it.
QString CameraForm::Address() const {
    const QString typed = txtAddress->text().trimmed();
    if (Kind() == CaptureKind::Test) return testScheme + typed;
    if (Kind() == CaptureKind::File) return typed;
    if (CameraAddress::Split(typed).HasAccess()) return CameraAddress::Encoded(typed);
    const CameraAddress parts{typed, txtUser->text(), txtPassword->text()};
    return CameraAddress::Split(shown.Address) == parts ? shown.Address : parts.Joined();
}

// An address that was written as a whole goes into the fields for its parts.
void CameraForm::TakeApart() {
    const CameraAddress parts = CameraAddress::Split(txtAddress->text().trimmed());
    if (Kind() != CaptureKind::Network || !parts.HasAccess()) return;
    txtAddress->setText(parts.Place);
    txtUser->setText(parts.User);
    txtPassword->setText(parts.Password);
}

void CameraForm::ChangeKind() {
    const CaptureKind kind = Kind();
    txtAddress->setText(kind == CaptureKind::Network ? QStringLiteral("rtsp://")
                        : kind == CaptureKind::Test  ? QStringLiteral("640x480")
                                                     : QString());
    FitToKind();
    emit Changed();
}

void CameraForm::FitToKind() {
    const CaptureKind kind = Kind();
    for (QWidget* field : {txtUser, txtPassword})
        rows->ShowRow(field, kind == CaptureKind::Network);
    btnFile->setVisible(kind == CaptureKind::File);
    const QString key = kind == CaptureKind::Network ? QStringLiteral("Address")
                        : kind == CaptureKind::Test  ? QStringLiteral("TestSize")
                                                     : QStringLiteral("File");
    SetCaption(*lblAddress, bindings.Text(key));
    txtAddress->setAccessibleName(bindings.Text(key));
    txtAddress->setToolTip(bindings.Text(key + "Help"));
}

void CameraForm::ChooseFile() {
    const QFileDialog& chooser =
        OpenFileChooser(this, QFileDialog::ExistingFile, bindings.Text("ChooseFile"), {});
    connect(&chooser, &QFileDialog::fileSelected, this, [this](const QString& file) {
        txtAddress->setText(Paths::Native(file));
        emit Changed();
    });
}
