#include "display/frmProgress.h"

#include "display/ProgressPicture.h"
#include "document/StringOps.h"
#include "values/Failure.h"
#include "values/Twips.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace zan::display {

using site::Logger;
using values::Colour;

namespace {

constexpr int TickMilliseconds = 50;
constexpr int StepTwips = 200;
constexpr Colour Forward = values::rgb(0, 0, 200);
constexpr Colour Backward = values::rgb(200, 0, 0);

// The scene between computer and logger, in twips.
constexpr int SceneWidth = 4800;
constexpr int SceneHeight = 960;
constexpr int IconSize = 720;
constexpr int ComputerLeft = 180;
constexpr int LoggerLeft = SceneWidth - ComputerLeft - IconSize;
constexpr int BlockSize = 150;
constexpr int BarHeight = 330;

int pixels(double twips)
{
    return values::twipsToPixels(twips);
}

int byteOf(Colour colour, int place)
{
    return colour.code >> (8 * place) & 0xff;
}

int rounded(double value)
{
    return int(std::nearbyint(value));
}

void paintComputer(QPainter& painter, const QRectF& area)
{
    const double unit = area.width() / 12;
    const auto box = [&](double x, double y, double w, double h) {
        return QRectF(area.x() + x * unit, area.y() + y * unit, w * unit, h * unit);
    };
    painter.setPen(QPen(QColor(70, 78, 88), unit / 2));
    painter.setBrush(QColor(206, 212, 218));
    painter.drawRoundedRect(box(1, 1, 10, 7), unit / 2, unit / 2);
    painter.setBrush(QColor(44, 84, 140));
    painter.drawRect(box(2, 2, 8, 5));
    painter.setBrush(QColor(206, 212, 218));
    painter.drawRect(box(5, 8, 2, 1.5));
    painter.drawRoundedRect(box(3, 9.5, 6, 1.3), unit / 3, unit / 3);
}

void paintLogger(QPainter& painter, const QRectF& area)
{
    const double unit = area.width() / 12;
    const auto box = [&](double x, double y, double w, double h) {
        return QRectF(area.x() + x * unit, area.y() + y * unit, w * unit, h * unit);
    };
    painter.setPen(QPen(QColor(70, 78, 88), unit / 2));
    painter.drawLine(box(9, 0.5, 0, 0).topLeft(), box(9, 3.5, 0, 0).topLeft());
    painter.setBrush(QColor(226, 214, 178));
    painter.drawRoundedRect(box(1.5, 3.5, 9, 7.5), unit / 2, unit / 2);
    painter.setBrush(QColor(150, 176, 140));
    painter.drawRect(box(3, 5, 6, 2));
    painter.setBrush(QColor(70, 78, 88));
    for (int terminal = 0; terminal < 4; ++terminal)
        painter.drawEllipse(box(3.2 + terminal * 1.6, 8.6, 0.7, 0.7));
}

} // namespace

/// Frame1: the two pictures and the blocks between them.
class frmProgress::Scene : public QWidget
{
public:
    explicit Scene(frmProgress& form)
        : QWidget(&form)
        , m_form(form)
    {
        setFixedSize(pixels(SceneWidth), pixels(SceneHeight));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double top = (SceneHeight - IconSize) / 2.0;
        const auto area = [&](double left) {
            return QRectF(pixels(left), pixels(top), pixels(IconSize), pixels(IconSize));
        };
        for (const Block& block : m_form.m_blocks) {
            painter.fillRect(pixels(block.left), pixels((SceneHeight - BlockSize) / 2.0), pixels(BlockSize),
                             pixels(BlockSize), values::toQColor(block.colour, palette()));
        }
        paintComputer(painter, area(ComputerLeft));
        paintLogger(painter, area(LoggerLeft));
    }

private:
    frmProgress& m_form;
};

frmProgress::frmProgress(QWidget* owner, surface::HostForms& forms)
    // A window of its own, also when its panel is drawn in a scene.
    : QWidget(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::BypassGraphicsProxyWidget)
    , m_forms(forms)
    , m_site(new QLabel(this))
    , m_bar(new ProgressPicture(this))
    , m_scene(new Scene(*this))
    , m_timer(new QTimer(this))
{
    m_site->setTextFormat(Qt::PlainText);
    m_site->setWordWrap(true);
    m_site->setMinimumHeight(m_site->fontMetrics().height() * 2);
    m_bar->setFixedHeight(pixels(BarHeight));
    m_bar->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_scene);
    layout->addWidget(m_site);
    layout->addWidget(m_bar);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    // The blocks start one behind the other on their way to the logger.
    for (int block = 0; block < BlockCount; ++block)
        m_blocks[std::size_t(block)].left = ComputerLeft + IconSize + (BlockCount - 1 - block) * (BlockSize + 60);
    setColour(Forward);
    QObject::connect(m_timer, &QTimer::timeout, this, &frmProgress::tick);
    m_timer->start(TickMilliseconds);
}

frmProgress::~frmProgress() = default;

void frmProgress::setLogger(const values::Ref<Logger>& logger)
{
    if (m_logger)
        QObject::disconnect(m_logger.get(), nullptr, &m_context, nullptr);
    m_logger = logger;
    if (!m_logger)
        return;
    Logger* source = m_logger.get();
    const auto unloadAtEnd = [this] { unload(); };
    QObject::connect(source, &Logger::Connected, &m_context, unloadAtEnd);
    QObject::connect(source, &Logger::Disconnected, &m_context, unloadAtEnd);
    QObject::connect(source, &Logger::ProgramComplete, &m_context, unloadAtEnd);
    QObject::connect(source, &Logger::UnloadComplete, &m_context, unloadAtEnd);
    QObject::connect(source, &Logger::ConnectionError, &m_context,
                     [this](const QString& message) { onConnectionError(message); });
    QObject::connect(source, &Logger::ConnectionProgress, &m_context,
                     [this](const QString& message) { onConnectionProgress(message); });
    const auto percentage = [this](int percent, const QString& message) { onPercentage(percent, message); };
    QObject::connect(source, &Logger::ProgramLoggerProgress, &m_context, percentage);
    QObject::connect(source, &Logger::UnloadLoggerProgress, &m_context, percentage);
}

void frmProgress::clear()
{
    setCaption(QString());
    setSiteText(QString());
    m_bar->hide();
}

QString frmProgress::siteText() const
{
    return m_site->text();
}

void frmProgress::setSiteText(const QString& text)
{
    m_site->setText(text);
}

bool frmProgress::barVisible() const
{
    return !m_bar->isHidden();
}

void frmProgress::unload()
{
    m_isLoaded = false;
    setLogger({});
    m_timer->stop();
    hide();
    deleteLater();
}

void frmProgress::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    unload();
}

void frmProgress::yield()
{
    // Lets the window paint while the link library works. Anything may happen meanwhile, the end of this window too.
    QCoreApplication::processEvents();
}

void frmProgress::onConnectionProgress(const QString& message)
{
    QString text = document::StringOps::TrimWhitespace(message);
    text.replace(QLatin1String("\r\n\r\n"), QLatin1String("\r\n"));
    if (text == QLatin1String("OK"))
        setSiteText(siteText() + QLatin1String("...OK"));
    else if (!text.isEmpty())
        setSiteText(text);
    yield();
}

void frmProgress::onPercentage(int percentage, const QString& message)
{
    if (!message.isEmpty())
        setSiteText(message);
    // A negative percentage only changes the text.
    if (percentage >= 0) {
        m_bar->show();
        m_bar->draw(percentage / 100.0);
    }
    yield();
}

void frmProgress::onConnectionError(const QString& message)
{
    const QPointer<frmProgress> alive(this);
    values::attempt([&] { m_forms.messageBox(this, message, surface::HostForms::OkOnly, QString()); });
    if (alive)
        unload();
}

void frmProgress::tick()
{
    for (Block& block : m_blocks) {
        const int next = block.left + (block.backwards ? -StepTwips : StepTwips);
        if (!block.backwards && next >= LoggerLeft) {
            block.backwards = true;
            setColour(Backward);
        } else if (block.backwards && next <= ComputerLeft + IconSize) {
            block.backwards = false;
            setColour(Forward);
        }
        block.left = next;
    }
    m_scene->update();
}

void frmProgress::setColour(Colour colour)
{
    // Each block stands a quarter nearer to the background than the one before.
    const Colour background = values::fromQColor(palette().color(QPalette::Window));
    const int red = byteOf(colour, 0);
    const int green = byteOf(colour, 1);
    const int blue = byteOf(colour, 2);
    // COMPAT: the red step is rounded before it is multiplied, the other two afterwards.
    const int redStep = rounded((red - byteOf(background, 0)) / 4.0);
    const double greenStep = (green - byteOf(background, 1)) / 4.0;
    const double blueStep = (blue - byteOf(background, 2)) / 4.0;
    m_blocks[0].colour = colour;
    for (int block = 1; block < BlockCount; ++block) {
        m_blocks[std::size_t(block)].colour = values::rgb(red - block * redStep, green - rounded(block * greenStep),
                                                          blue - rounded(block * blueStep));
    }
    m_scene->update();
}

} // namespace zan::display
