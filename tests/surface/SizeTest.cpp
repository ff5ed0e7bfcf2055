#include "support/Properties.h"
#include "surface/SurfaceFixture.h"
#include "surface/host/WidgetControl.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"
#include "surface/text/TextPainter.h"
#include "surface/text/ToolTipText.h"

#include <QCheckBox>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOption>

namespace zan::surface::tests {

namespace {

struct Reach
{
    QRectF reach;
    int parts = 0;
};

/// Notes how far what is painted reaches, and how much it is.
class ReachEngine : public QPaintEngine
{
public:
    ReachEngine()
        : QPaintEngine(QPaintEngine::AllFeatures)
    {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return User; }
    void drawPixmap(const QRectF& area, const QPixmap&, const QRectF&) override { note(area); }
    void drawRects(const QRectF* areas, int count) override
    {
        for (int i = 0; i < count; ++i)
            note(areas[i]);
    }
    void drawPath(const QPainterPath& path) override { note(path.boundingRect(), path.elementCount()); }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override
    {
        QPolygonF polygon;
        for (int i = 0; i < count; ++i)
            polygon.append(points[i]);
        note(polygon.boundingRect(), count);
    }
    void note(const QRectF& area, int count = 1)
    {
        reach |= area;
        parts += count;
    }
    QRectF reach;
    int parts = 0;
};

class ReachDevice : public QPaintDevice
{
public:
    QPaintEngine* paintEngine() const override { return &engine; }
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 400;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return 96;
        }
    }
    mutable ReachEngine engine;
};

class LargestOption : public QProxyStyle
{
public:
    LargestOption()
        : QProxyStyle(QStringLiteral("Fusion"))
    {}
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        largest = largest.expandedTo(option->rect.size());
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    mutable QSize largest{0, 0};
};

class Sizes : public SurfaceTest
{
protected:
    /// Paints a control of these bounds, of which the 400 by 400 pixels at the origin are seen.
    static Reach painted(LiveControl& control, const QRect& bounds)
    {
        ReachDevice device;
        QPainter painter(&device);
        TextPainter text;
        const QPalette palette;
        PaintContext context{painter, palette, text};
        control.paint(context, bounds);
        painter.end();
        return {device.engine.reach, device.engine.parts};
    }
    /// What the toolkit itself paints for a figure, of which the 400 by 400 pixels at the origin are kept.
    template <class Draw>
    static QImage drawn(Draw draw)
    {
        QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        draw(painter);
        return image;
    }
    static int differing(const QImage& a, const QImage& b)
    {
        int count = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x)
                count += std::abs(qRed(a.pixel(x, y)) - qRed(b.pixel(x, y))) > 40;
        }
        return count;
    }
};

} // namespace

TEST_F(Sizes, AFigureOfAnySizeIsPaintedNearWhatIsSeenOnly)
{
    constexpr int Huge = 6'666'667; // pixels of 100 million twips
    const auto shape = show<Shape>(QStringLiteral("Shape"), {0, 0, 10, 10});
    test::put(*shape, "FillStyle", 0);
    for (int figure = 0; figure <= 5; ++figure) {
        test::put(*shape, "Shape", figure);
        for (const QRect& bounds : {QRect(0, 0, Huge, Huge), QRect(-Huge / 2, -Huge / 2, Huge, Huge),
                                    QRect(200 - Huge, 200 - Huge, Huge, Huge), QRect(-Huge / 2, 10, Huge, 300)}) {
            const Reach engine = painted(*shape, bounds);
            EXPECT_TRUE(QRectF(-400, -400, 1200, 1200).contains(engine.reach)) << figure;
            EXPECT_LT(engine.parts, 20'000) << figure;
        }
        EXPECT_EQ(painted(*shape, QRect(500, 0, Huge, Huge)).parts, 0) << "out of sight";
    }
}

TEST_F(Sizes, TheVisiblePartOfALargeFigureLooksLikeTheWhole)
{
    const auto shape = show<Shape>(QStringLiteral("Shape"), {0, 0, 10, 10});
    test::put(*shape, "FillStyle", 0);
    test::put(*shape, "FillColor", 0x8080);
    test::put(*shape, "BorderWidth", 3);
    TextPainter text;
    const QPalette palette;
    for (const int figure : {0, 2, 4}) {
        test::put(*shape, "Shape", figure);
        for (const QPoint corner : {QPoint(20, 20), QPoint(-2300, 10), QPoint(-700, -700), QPoint(-4700, -4650),
                                    QPoint(-2000, -4700), QPoint(-4750, -2500)}) {
            const QRect bounds(corner, QSize(5000, 5000));
            const QImage part = drawn([&](QPainter& painter) {
                PaintContext context{painter, palette, text};
                shape->paint(context, bounds);
            });
            const QImage whole = drawn([&](QPainter& painter) {
                painter.setRenderHint(QPainter::Antialiasing, figure != 0);
                painter.setBrush(QColor(0x80, 0x80, 0));
                painter.setPen(QPen(Qt::black, 3, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
                const QRectF outline = QRectF(bounds).adjusted(1.5, 1.5, -1.5, -1.5);
                if (figure == 0)
                    painter.drawRect(outline);
                else if (figure == 2)
                    painter.drawEllipse(outline);
                else
                    painter.drawRoundedRect(outline, outline.width() / 6, outline.width() / 6);
            });
            // The toolkit's curves are up to 0.7 pixels off a true ellipse of this size, all along the visible edge.
            EXPECT_LT(differing(part, whole), 800) << figure << " at " << corner.x() << ' ' << corner.y();
        }
    }
}

TEST_F(Sizes, AProgressBarOfAnySizePaintsTheBlocksThatAreSeen)
{
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {0, 0, 10, 10});
    test::put(*bar, "Value", 100);
    for (int orientation = 0; orientation <= 1; ++orientation) {
        test::put(*bar, "Orientation", orientation);
        const int parts = painted(*bar, orientation == 0 ? QRect(-3'000'000, 10, 6'000'000, 20)
                                                         : QRect(10, -3'000'000, 20, 6'000'000))
                              .parts;
        EXPECT_LT(parts, 60);
        EXPECT_GT(parts, 20);
    }
}

TEST_F(Sizes, TheStyleIsAskedForAButtonNoLargerThanItTakesToLookTheSame)
{
    surface->resize(400, 300);
    LargestOption style;
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {-20'000, -30'000, 66'667, 66'667});
    test::put(*button, "Caption", QStringLiteral("Open the gate"));
    picture();
    button->widget()->setStyle(&style);
    for (const QPoint corner : {QPoint(-20'000, -30'000), QPoint(10, 10), QPoint(-66'600, -66'600)}) {
        button->move(float(corner.x() * 15), float(corner.y() * 15));
        picture();
    }
    EXPECT_GT(style.largest.width(), 400);
    EXPECT_LT(style.largest.width(), 2000);
    EXPECT_LT(style.largest.height(), 2000);
    button->widget()->setStyle(nullptr);
}

TEST_F(Sizes, ALargeButtonLooksTheSameWhereverItIsSeen)
{
    surface->resize(400, 60);
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {0, 10, 6000, 40});
    test::put(*button, "Caption", QStringLiteral("Open the gate"));
    QPushButton whole(QStringLiteral("Open the gate"));
    whole.resize(6000, 40);
    whole.setFont(button->font()->qfont());
    for (const int left : {0, 20, -100, -2700, -2900, -5590, -5700}) {
        button->move(float(left * 15));
        const QImage shown = picture().copy(std::max(left, 0), 10, std::min(400, left + 6000), 40);
        const QImage expected = whole.grab(QRect(std::max(-left, 0), 0, shown.width(), 40)).toImage();
        EXPECT_LT(differing(shown.convertToFormat(QImage::Format_RGB32).copy(2, 2, shown.width() - 30, 36),
                            expected.convertToFormat(QImage::Format_RGB32).copy(2, 2, shown.width() - 30, 36)),
                  20)
            << left;
    }
}

TEST_F(Sizes, OfATextThatNobodyCanSeeAsAWholeTheBeginningIsLaidOut)
{
    const auto label = show<Label>(QStringLiteral("Label"), {0, 0, 100, 20});
    TextPainter painter;
    FontFace& face = label->font()->face();
    const auto measured = [&](int length) { return painter.measure(QString(length, u'x'), face, false); };
    EXPECT_EQ(measured(1'000'000), measured(250'000));
    EXPECT_NE(measured(20'000), measured(10'000)) << "what may be seen is measured as a whole";
    const QString other(1'000'000, QChar(0x05d0)); // goes through the toolkit's layout
    EXPECT_EQ(painter.measure(other, face, false), painter.measure(other.left(250'000), face, false));
}

TEST_F(Sizes, WidgetsAreGivenAsMuchOfATextAsTheyCanShowAndTheTextStaysWhole)
{
    const QString text(400'000, u'x');
    const auto box = show<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 100, 20});
    test::put(*box, "Caption", text);
    const auto lines = show<TextBox>(QStringLiteral("Text"), {10, 40, 100, 60});
    test::put(*lines, "MultiLine", true);
    test::put(*lines, "Text", text);
    surface->show();
    settle();
    EXPECT_EQ(qobject_cast<QCheckBox*>(box->widget())->text().size(), 10'000);
    auto* edit = qobject_cast<QPlainTextEdit*>(lines->widget());
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->toPlainText().size(), 250'000);
    EXPECT_TRUE(edit->isReadOnly()) << "an edit would lose the rest";
    EXPECT_EQ(values::toText(lines->get(values::Name("Text"))).size(), text.size());
    EXPECT_LT(plainToolTip(text).size(), 5000);
}

} // namespace zan::surface::tests
