// Draws the editor's product pictures into a folder (res/img of the checkout):
//   editor.png  the splash and about picture of Tavik Editor
//   tavik.png   the same picture for the other products of the family
//   icon.png    the program's window icon
// Build the target tavik_draw_pictures and run it with the folder as its argument; the
// pictures are committed, so only a change of the drawing needs a run.
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cstdio>

namespace {

const QColor kNight(0x0b, 0x1f, 0x4a);
const QColor kBlue(0x1d, 0x4e, 0xa8);
const QColor kSignBlue(0x12, 0x3d, 0x8c);
const QColor kAmber(0xff, 0xb3, 0x1a);
const QColor kWhite(0xfa, 0xfa, 0xf7);

// The station sign: a round blue plate with a white ring and a loudspeaker sending out
// three waves, inside `box` (a square).
void drawSign(QPainter& p, const QRectF& box) {
    const double s = box.width();
    const QPointF c = box.center();
    p.save();
    // Shadow under the plate.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 70));
    p.drawEllipse(box.translated(s * 0.02, s * 0.03).adjusted(s * 0.02, s * 0.02, 0, 0));
    // White ring and blue plate with a little light from the top left.
    p.setBrush(kWhite);
    p.drawEllipse(box);
    QRadialGradient plate(c - QPointF(s * 0.18, s * 0.2), s * 0.6);
    plate.setColorAt(0, kBlue.lighter(125));
    plate.setColorAt(1, kSignBlue);
    p.setBrush(plate);
    p.drawEllipse(box.adjusted(s * 0.06, s * 0.06, -s * 0.06, -s * 0.06));

    // The loudspeaker: a box and a horn opening to the right.
    const double u = s / 100.0;
    const QPointF o = c - QPointF(50 * u, 50 * u);
    auto at = [&](double x, double y) { return o + QPointF(x * u, y * u); };
    QPainterPath speaker;
    speaker.moveTo(at(19, 40));
    speaker.lineTo(at(33, 40));
    speaker.lineTo(at(50, 26));
    speaker.lineTo(at(50, 74));
    speaker.lineTo(at(33, 60));
    speaker.lineTo(at(19, 60));
    speaker.closeSubpath();
    p.setBrush(kWhite);
    p.drawPath(speaker);

    // Three waves, the outer ones fainter, in the signal colour.
    QPen wave(kAmber, 5.5 * u, Qt::SolidLine, Qt::RoundCap);
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i < 3; ++i) {
        QColor colour = kAmber;
        colour.setAlphaF(1.0 - i * 0.18);
        wave.setColor(colour);
        p.setPen(wave);
        const double r = (12 + i * 10) * u;
        p.drawArc(QRectF(at(51, 50) - QPointF(r, r), QSizeF(2 * r, 2 * r)), -45 * 16, 90 * 16);
    }
    p.restore();
}

// The banner: night-blue sky, the sign on the left, the name on the right and a platform
// edge along the bottom.
QImage drawBanner(const QString& name, const QString& second) {
    QImage image(420, 140, QImage::Format_ARGB32_Premultiplied);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);

    QLinearGradient sky(0, 0, 0, image.height());
    sky.setColorAt(0, kNight);
    sky.setColorAt(1, kBlue);
    p.fillRect(image.rect(), sky);
    // A soft glow behind the sign.
    QRadialGradient glow(QPointF(70, 62), 90);
    glow.setColorAt(0, QColor(255, 255, 255, 46));
    glow.setColorAt(1, QColor(255, 255, 255, 0));
    p.fillRect(image.rect(), glow);

    // The platform edge: a white line above a strip of amber and dark tiles.
    const int edge = image.height() - 16;
    p.fillRect(QRect(0, edge, image.width(), 3), kWhite);
    for (int x = 0, i = 0; x < image.width(); x += 14, ++i)
        p.fillRect(QRect(x, edge + 3, 14, 13), i % 2 ? kAmber : QColor(0x22, 0x22, 0x28));

    drawSign(p, QRectF(18, 10, 104, 104));

    QFont big(QStringLiteral("DejaVu Sans"));
    big.setBold(true);
    big.setPixelSize(58);
    big.setLetterSpacing(QFont::AbsoluteSpacing, 1.5);
    p.setFont(big);
    // The name with a faint shadow, so it stands off the sky.
    const QRect nameBox(140, 14, 270, 68);
    p.setPen(QColor(0, 0, 0, 90));
    p.drawText(nameBox.translated(2, 2), Qt::AlignLeft | Qt::AlignVCenter, name);
    p.setPen(kWhite);
    p.drawText(nameBox, Qt::AlignLeft | Qt::AlignVCenter, name);

    QFont small(QStringLiteral("DejaVu Sans"));
    small.setPixelSize(22);
    small.setLetterSpacing(QFont::AbsoluteSpacing, 4);
    p.setFont(small);
    p.setPen(kAmber);
    p.drawText(QRect(143, 80, 270, 30), Qt::AlignLeft | Qt::AlignVCenter, second);
    p.end();
    return image.convertToFormat(QImage::Format_RGB32);
}

QImage drawIcon(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    drawSign(p, QRectF(size * 0.02, size * 0.02, size * 0.92, size * 0.92));
    p.end();
    return image;
}

bool save(const QImage& image, const QString& path) {
    if (image.save(path)) {
        std::printf("%s (%dx%d)\n", qPrintable(path), image.width(), image.height());
        return true;
    }
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    return false;
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: tavik_draw_pictures FOLDER\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]) + QStringLiteral("/");
    const bool ok = save(drawBanner(QStringLiteral("Tavik"), QStringLiteral("EDITOR")),
                         folder + QStringLiteral("editor.png")) &&
                    save(drawBanner(QStringLiteral("Tavik"), QStringLiteral("ANSAGEN")),
                         folder + QStringLiteral("tavik.png")) &&
                    save(drawIcon(256), folder + QStringLiteral("icon.png"));
    return ok ? 0 : 2;
}
