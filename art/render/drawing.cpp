#include "drawing.h"

#include <QPainter>
#include <QRandomGenerator>

#include <cmath>
#include <stdexcept>
#include <vector>

namespace {

constexpr QRgb Opaque = 0xFF000000;

QImage Blank(QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// Unevenness of a surface, around 0: noise that is drawn out to `length` pixels along the rows.
std::vector<double> Grain(QSize size, int length) {
    QRandomGenerator random(20260304);
    std::vector<double> grain;
    grain.reserve(static_cast<std::size_t>(size.width()) * size.height());
    const double keep = 1.0 - 1.0 / length;
    for (int y = 0; y < size.height(); ++y) {
        double value = random.generateDouble() - 0.5;
        for (int x = 0; x < size.width(); ++x) {
            value = value * keep + (random.generateDouble() - 0.5) * (1 - keep);
            grain.push_back(value * std::sqrt(length));
        }
    }
    return grain;
}

void AddGrain(QImage& image, const QImage& on, const QImage& covered, int length, double depth) {
    const std::vector<double> grain = Grain(image.size(), length);
    auto value = grain.begin();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x, ++value) {
            const double weight = qAlpha(on.pixel(x, y)) * (255 - qAlpha(covered.pixel(x, y)));
            const int change = qRound(*value * depth * weight / 65025);
            const QRgb old = image.pixel(x, y);
            const auto moved = [change](int part) { return qBound(0, part + change, 255); };
            image.setPixel(x, y, qRgb(moved(qRed(old)), moved(qGreen(old)), moved(qBlue(old))));
        }
    }
}

}  // namespace

Drawing::Drawing(const QString& path) : file(path), renderer(path) {
    if (!renderer.isValid()) throw std::runtime_error("not a drawing: " + file.toStdString());
}

void Drawing::Need(const QString& id) const {
    if (!Has(id))
        throw std::runtime_error("no \"" + id.toStdString() + "\" in " + file.toStdString());
}

QImage Drawing::Render(QSize size) const {
    QImage image = Blank(size.isEmpty() ? renderer.defaultSize() : size);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

QImage Drawing::RenderElement(const QString& id) const {
    Need(id);
    QImage image = Blank(renderer.defaultSize());
    QPainter painter(&image);
    renderer.render(&painter, id, renderer.boundsOnElement(id));
    return image;
}

QRect Drawing::Cell(const QString& id) const {
    Need(id);
    return renderer.boundsOnElement(id).toRect();
}

QImage RenderBody(const Drawing& drawing) {
    const QImage outline = drawing.RenderElement(QStringLiteral("silhouette"));
    // Without multiplied colours a pixel on the edge keeps the colour of the body beside it.
    const QImage drawn = drawing.Render().convertToFormat(QImage::Format_ARGB32);
    QImage body(drawn.size(), QImage::Format_ARGB32);
    for (int y = 0; y < body.height(); ++y)
        for (int x = 0; x < body.width(); ++x) body.setPixel(x, y, drawn.pixel(x, y) | Opaque);
    const QImage smooth = drawing.RenderElement(QStringLiteral("smooth"));
    const QString brushed = QStringLiteral("brushed");
    const QString grained = QStringLiteral("grained");
    if (drawing.Has(brushed)) AddGrain(body, drawing.RenderElement(brushed), smooth, 60, 9);
    if (drawing.Has(grained)) AddGrain(body, drawing.RenderElement(grained), smooth, 1, 5);
    for (int y = 0; y < body.height(); ++y)
        for (int x = 0; x < body.width(); ++x)
            if (qAlpha(outline.pixel(x, y)) < 128) body.setPixel(x, y, 0);
    return body;
}
