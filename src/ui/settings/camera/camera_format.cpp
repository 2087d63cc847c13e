#include "ui/settings/camera/camera_format.h"

#include "camera/ezvidcap.h"
#include "core/program.h"
#include "platform/platform.h"
#include "ui/settings/settings_rows.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSize>

#include <algorithm>
#include <cmath>

namespace {

constexpr int sizeRole = Qt::UserRole;

QString RateText(double rate) {
    return QString::number(rate, 'f', 2).remove(QRegularExpression(QStringLiteral("\\.?0+$")));
}

// Smaller ones first, each once.
QList<QSize> Sizes(const QList<CaptureFormat>& offered) {
    QList<QSize> sizes;
    for (const CaptureFormat& format : offered)
        if (const QSize size(format.Width, format.Height); !sizes.contains(size)) sizes << size;
    std::ranges::sort(sizes, [](QSize a, QSize b) {
        return std::pair(a.width() * a.height(), a.width()) <
               std::pair(b.width() * b.height(), b.width());
    });
    return sizes;
}

// Faster ones first, each once.
QList<double> Rates(const QList<CaptureFormat>& offered, QSize size) {
    QList<double> rates;
    for (const CaptureFormat& format : offered) {
        if (QSize(format.Width, format.Height) != size) continue;
        for (const double rate : format.Rates)
            if (std::ranges::none_of(rates,
                                     [rate](double r) { return RateText(r) == RateText(rate); }))
                rates << rate;
    }
    std::ranges::sort(rates, std::greater<>());
    return rates;
}

// As the settings have it; empty for automatic.
QString WishText(const FormatWish& wish) {
    if (wish.Width == 0) return {};
    const QString size = QStringLiteral("%1x%2").arg(wish.Width).arg(wish.Height);
    return wish.Rate > 0 ? size + u'@' + RateText(wish.Rate) : size;
}

// What can be selected that comes nearest to a format.
FormatWish NearestWish(const QList<CaptureFormat>& offered, const CaptureFormat& format) {
    FormatWish wish{format.Width, format.Height, 0};
    const CaptureFormat nearest =
        ChooseCaptureFormat(offered, WishText(wish)).value_or(CaptureFormat());
    wish = {nearest.Width, nearest.Height, 0};
    const QList<double> rates = Rates(offered, QSize(wish.Width, wish.Height));
    const auto away = [&format](double rate) { return std::abs(rate - format.Rate); };
    if (format.Rate > 0 && !rates.isEmpty()) wish.Rate = *std::ranges::min_element(rates, {}, away);
    return wish;
}

}  // namespace

CameraFormat::CameraFormat(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "CameraFormat", parent),
      cbSize(new QComboBox),
      cbRate(new QComboBox),
      btnDriver(new QPushButton),
      lblOffer(new QLabel) {
    auto* rows = new SettingsRows(Controls);
    rows->AddWhole(lblOffer);
    rows->Add(cbSize, {.Key = "CaptureFormat",
                       .Text = "SizeCaption",
                       .Show = [this](const QString& setting) { Ask(setting); },
                       .Value = [this] { return WishText(wish); }});
    rows->Add(cbRate, {.Text = "RateCaption"});
    Controls.Add(btnDriver, {.Text = "Driver"});
    Body().addLayout(rows);
    Body().addStretch(1);
    Body().addWidget(btnDriver, 0, Qt::AlignLeft);
    lblOffer->setTextFormat(Qt::PlainText);
    for (QComboBox* list : {cbSize, cbRate}) list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(cbSize, &QComboBox::activated, this, [this] {
        const QSize size = cbSize->currentData().toSize();
        wish = {size.width(), size.height(), 0};
        ShowRates();
    });
    connect(cbRate, &QComboBox::activated, this,
            [this] { wish.Rate = cbRate->currentData().toDouble(); });
    connect(btnDriver, &QPushButton::clicked, this, &CameraFormat::ShowDriverPages);
    connect(&Controls, &Bindings::TextsShown, this, &CameraFormat::ShowOffer);
    Finish();
}

void CameraFormat::Ask(const QString& setting) {
    device = Core().ezVidCap1.InstalledDevice().value_or(CaptureDevice());
    camera = Core().DriverText();
    offered = Core().System().Cameras->Formats(device);
    btnDriver->setVisible(Core().System().Cameras->HasOwnPages(device));
    wish = ParseFormatWish(setting).value_or(FormatWish());
    ShowOffer();
    cbSize->setFocus();
}

void CameraFormat::ShowOffer() {
    lblOffer->setText(offered.isEmpty() ? Text("NoOffer").arg(camera) : Text("Offer").arg(camera));
    ShowSizes();
    ShowRates();
}

// A size of the settings that this camera does not have stands in the list too: another camera may.
void CameraFormat::ShowSizes() {
    cbSize->clear();
    const auto best = ChooseCaptureFormat(offered, {});
    cbSize->addItem(
        best ? Text("AutomaticSize").arg(best->Width).arg(best->Height) : Text("Automatic"),
        QSize(0, 0));
    for (const QSize& size : Sizes(offered))
        cbSize->addItem(Text("Size").arg(size.width()).arg(size.height()), size);
    const QSize wanted(wish.Width, wish.Height);
    if (cbSize->findData(wanted) < 0)
        cbSize->addItem(Text("SizeMissing").arg(wanted.width()).arg(wanted.height()), wanted);
    cbSize->setCurrentIndex(cbSize->findData(wanted));
}

void CameraFormat::ShowRates() {
    cbRate->clear();
    cbRate->addItem(Text("Automatic"), 0.0);
    const QSize size = cbSize->currentData().toSize();
    QList<double> rates = Rates(offered, size);
    for (const double rate : rates) cbRate->addItem(Text("Rate").arg(RateText(rate)), rate);
    const auto place = [this] {
        for (int i = 0; i < cbRate->count(); ++i)
            if (RateText(cbRate->itemData(i).toDouble()) == RateText(wish.Rate)) return i;
        return -1;
    };
    if (place() < 0) cbRate->addItem(Text("RateMissing").arg(RateText(wish.Rate)), wish.Rate);
    cbRate->setCurrentIndex(place());
    cbRate->setEnabled(!size.isEmpty());
}

// What closes this window meanwhile does not close the driver's.
void CameraFormat::ShowDriverPages() {
    const auto present = ChooseCaptureFormat(offered, WishText(wish));
    const auto chosen = Core().System().Cameras->ShowOwnPages(device, present, winId());
    if (!chosen || !isVisible()) return;
    wish = NearestWish(offered, *chosen);
    ShowSizes();
    ShowRates();
}
