#include "ui/settings/camera/camera_form.h"

#include "base/paths.h"
#include "camera/camera_list.h"
#include "ui/settings/camera/camera_address.h"
#include "ui/texts/texts.h"

#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
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
    return camera;
}

CameraForm::CameraForm(const Texts& ownTexts, QWidget* parent)
    : QWidget(parent),
      txtName(new QLineEdit),
      cbKind(new QComboBox),
      txtAddress(new QLineEdit),
      btnFile(new QPushButton(QStringLiteral("…"))),
      txtUser(new QLineEdit),
      txtPassword(new QLineEdit),
      texts(ownTexts),
      lblName(new QLabel),
      lblKind(new QLabel),
      lblAddress(new QLabel),
      lblUser(new QLabel),
      lblPassword(new QLabel) {
    Lay();
    Connect();
}

void CameraForm::Lay() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins({});
    struct Row {
        QLabel* Caption;
        QWidget* Field;
    };
    int row = 0;
    for (const Row& each : std::initializer_list<Row>{{lblName, txtName},
                                                      {lblKind, cbKind},
                                                      {lblAddress, txtAddress},
                                                      {lblUser, txtUser},
                                                      {lblPassword, txtPassword}}) {
        each.Caption->setBuddy(each.Field);
        grid->addWidget(each.Caption, row, 0);
        if (each.Field != txtAddress) grid->addWidget(each.Field, row, 1);
        ++row;
    }
    auto* place = new QHBoxLayout;
    place->addWidget(txtAddress, 1);
    place->addWidget(btnFile);
    grid->addLayout(place, 2, 1);
    grid->setColumnStretch(1, 1);
    QWidget* before = cbKind;
    for (QWidget* next :
         std::initializer_list<QWidget*>{txtAddress, btnFile, txtUser, txtPassword}) {
        setTabOrder(before, next);
        before = next;
    }
    txtPassword->setEchoMode(QLineEdit::Password);
    constexpr int usualLetters = 34;  // of an address
    txtAddress->setMinimumWidth(fontMetrics().averageCharWidth() * usualLetters);
    for (std::size_t i = 0; i < kinds.size(); ++i) cbKind->addItem(QString());
}

void CameraForm::Connect() {
    for (QLineEdit* field : {txtName, txtAddress, txtUser, txtPassword})
        connect(field, &QLineEdit::textEdited, this, &CameraForm::Changed);
    connect(cbKind, &QComboBox::activated, this, &CameraForm::ChangeKind);
    connect(btnFile, &QPushButton::clicked, this, &CameraForm::ChooseFile);
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
    const CameraAddress parts{typed, txtUser->text(), txtPassword->text()};
    return CameraAddress::Split(shown.Address) == parts ? shown.Address : parts.Joined();
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
    const bool network = kind == CaptureKind::Network;
    for (QWidget* widget :
         std::initializer_list<QWidget*>{lblUser, txtUser, lblPassword, txtPassword})
        widget->setVisible(network);
    btnFile->setVisible(kind == CaptureKind::File);
    const QString caption = network                     ? Text("Address")
                            : kind == CaptureKind::Test ? Text("TestSize")
                                                        : Text("File");
    const QString help = network                     ? Text("AddressHelp")
                         : kind == CaptureKind::Test ? Text("TestSizeHelp")
                                                     : Text("FileHelp");
    lblAddress->setText(caption);
    txtAddress->setAccessibleName(caption);
    txtAddress->setToolTip(help);
}

void CameraForm::ChooseFile() {
    auto* chooser = new QFileDialog(this, Text("ChooseFile"));
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setFileMode(QFileDialog::ExistingFile);
    connect(chooser, &QFileDialog::fileSelected, this, [this](const QString& file) {
        txtAddress->setText(Paths::Native(file));
        emit Changed();
    });
    chooser->open();
}

QString CameraForm::Text(const QString& key) const {
    return texts.Get("CameraSources", key);
}

void CameraForm::ShowTexts() {
    lblName->setText(Text("Name"));
    lblKind->setText(Text("Kind"));
    lblUser->setText(Text("User"));
    lblPassword->setText(Text("Password"));
    for (int i = 0; i < cbKind->count(); ++i)
        cbKind->setItemText(i, Text("Kind" + QString::number(i)));
    const std::initializer_list<std::pair<QWidget*, QString>> names{{txtName, "Name"},
                                                                    {cbKind, "Kind"},
                                                                    {txtUser, "User"},
                                                                    {txtPassword, "Password"},
                                                                    {btnFile, "ChooseFile"}};
    for (const auto& [control, key] : names) {
        control->setAccessibleName(Text(key));
        control->setToolTip(Text(key + "Help"));
    }
    FitToKind();
}
