#include "zandata/ENTViewer.h"

#include "binding/MemberTable.h"
#include "surface/forms/HostForms.h"
#include "surface/host/Surface.h"
#include "values/Failure.h"
#include "zandata/CsvExport.h"
#include "zandata/RecordModel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QProgressDialog>
#include <QScrollBar>
#include <QTableView>
#include <QToolButton>

#include <algorithm>

namespace zan::zandata {

using values::attempt;
using values::given;
using values::Ref;

namespace {

/// Milliseconds after which a history has what it was handed.
constexpr int TimeToStore = 1000;
constexpr std::int32_t BufferUsed = 1;
constexpr int SampledRows = 50; // of which a column's width is taken

/// What a user asks of the table by its buttons and keys.
struct TableCommands
{
    std::function<void()> turnRound, find, save, copy;
};

/// The table itself: keys, and buttons beside the scroll bar at its foot.
class RecordTable final : public QTableView
{
public:
    RecordTable(QWidget* parent, TableCommands commands)
        : QTableView(parent)
        , m_commands(std::move(commands))
    {
        setSelectionMode(QAbstractItemView::ContiguousSelection);
        setEditTriggers(QAbstractItemView::NoEditTriggers);
        setWordWrap(false);
        setTabKeyNavigation(false);
        setCornerButtonEnabled(false);
        setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the buttons stand beside it
        verticalHeader()->setVisible(false);
        verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        horizontalHeader()->setHighlightSections(false);
        connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
            if (section == 0)
                m_commands.turnRound();
        });
        horizontalHeader()->setSectionsClickable(true);
        // Each is put before those that were there.
        addTool(QStringLiteral("CSV"), QStringLiteral("Save the whole table"), m_commands.save);
        addTool(QStringLiteral("Find"), QStringLiteral("Find a time"), m_commands.find);
        addTool(QStringLiteral("\u2191\u2193"), QStringLiteral("Newest first or last"), m_commands.turnRound);
    }
    void fitRows()
    {
        const int height = QFontMetrics(font()).height() + 4;
        if (verticalHeader()->defaultSectionSize() != height)
            verticalHeader()->setDefaultSectionSize(height);
        for (QToolButton* button : findChildren<QToolButton*>())
            button->setFont(font());
        horizontalHeader()->setFont(font());
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->matches(QKeySequence::Copy))
            m_commands.copy();
        else if (event->matches(QKeySequence::Find))
            m_commands.find();
        else if (event->matches(QKeySequence::Save))
            m_commands.save();
        else
            QTableView::keyPressEvent(event);
    }

private:
    void addTool(const QString& text, const QString& help, const std::function<void()>& action)
    {
        auto* button = new QToolButton(this);
        button->setText(text);
        button->setToolTip(help);
        button->setAccessibleName(help);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QToolButton::clicked, this, action);
        addScrollBarWidget(button, Qt::AlignLeft);
    }
    TableCommands m_commands;
};

} // namespace

ENTViewer::ENTViewer()
    : WidgetControl(values::WindowBackground, values::WindowText)
    , m_model(std::make_unique<RecordModel>())
{
    m_nextLook.setSingleShot(true);
    m_nextLook.setInterval(TimeToStore);
    QObject::connect(&m_nextLook, &QTimer::timeout, &m_context, [this] { Refresh(); });
}

ENTViewer::~ENTViewer()
{
    if (m_logger)
        QObject::disconnect(m_logger.get(), nullptr, &m_context, nullptr);
    if (QTableView* shown = table())
        shown->setModel(nullptr);
}

const binding::MemberTable& ENTViewer::members() const
{
    using C = ENTViewer;
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "ENTViewer", &widgetMembers(),
            {
                binding::field<&C::m_backColor, &C::restyle>("BackColor", values::WindowBackground),
                binding::field<&C::m_foreColor, &C::restyle>("ForeColor", values::WindowText),
                property<&C::Logger, &C::setLogger>("Logger"),
                property<&C::NewestFirst, &C::setNewestFirst>("NewestFirst"),
                binding::method<&C::Refresh>("Refresh"),
            });
    });
}

// Records ------------------------------------------------------------------------------------------------------

void ENTViewer::setLogger(const Ref<site::Logger>& logger)
{
    const Ref<ENTViewer> alive(this);
    const Ref<site::Logger> next = logger;
    if (m_logger)
        QObject::disconnect(m_logger.get(), nullptr, &m_context, nullptr);
    m_logger = next;
    if (m_logger)
        QObject::connect(m_logger.get(), &site::Logger::NewENTData, &m_context, [this] {
            if (!m_nextLook.isActive()) // many records a second do not put it off
                m_nextLook.start();
            Refresh();
        });
    Refresh();
}

void ENTViewer::Refresh()
{
    const Ref<ENTViewer> alive(this);
    const Ref<site::Logger> logger = m_logger;
    Ref<site::LogRecords> records;
    Ref<site::History> history;
    if (logger) {
        attempt([&] { history = given(logger->Live())->History(); });
        if (!history)
            attempt([&] { records = given(given(given(logger->Live())->Buffers())->Item(BufferUsed))->Records(); });
    }
    if (m_logger != logger)
        return; // the logger has given us another one when it was asked
    // The reader stays at the rows that he has scrolled to.
    QTableView* shown = table();
    const bool isAtTop = !shown || shown->verticalScrollBar()->value() == 0;
    const int before = m_model->rowCount();
    const bool hadColumns = m_model->columnCount() > 1;
    m_model->setSource(records, history);
    countChange();
    if (!shown)
        return;
    if (NewestFirst() && !isAtTop && m_model->rowCount() > before)
        shown->verticalScrollBar()->setValue(shown->verticalScrollBar()->value() + m_model->rowCount() - before);
    if (!hadColumns && m_model->columnCount() > 1)
        attend();
}

bool ENTViewer::NewestFirst() const
{
    return m_model->isNewestFirst();
}

void ENTViewer::setNewestFirst(bool isNewestFirst)
{
    m_model->setNewestFirst(isNewestFirst);
    countChange();
}

// Widget -------------------------------------------------------------------------------------------------------

QTableView* ENTViewer::table() const
{
    return static_cast<QTableView*>(widget());
}

QWidget* ENTViewer::createWidget(QWidget* parent)
{
    const auto told = [this](void (ENTViewer::*command)()) {
        return [this, command] {
            if (surface::Surface* place = surface())
                place->tell([&](surface::SurfaceEvents&) { (this->*command)(); });
        };
    };
    auto* shown = new RecordTable(parent, {.turnRound = [this] { setNewestFirst(!NewestFirst()); },
                                           .find = told(&ENTViewer::askForTime),
                                           .save = told(&ENTViewer::save),
                                           .copy = told(&ENTViewer::copySelection)});
    shown->setModel(m_model.get());
    shown->setAccessibleName(QStringLiteral("Log buffer"));
    return shown;
}

void ENTViewer::syncWidget(QWidget& widget)
{
    static_cast<RecordTable&>(widget).fitRows();
    attend();
}

/// Each column is as wide as its header and its first rows need.
void ENTViewer::attend()
{
    QTableView* shown = table();
    if (!shown)
        return;
    const QFontMetrics metrics(shown->font());
    const int rows = std::min(m_model->rowCount(), SampledRows);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        int width =
            metrics.horizontalAdvance(m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int row = 0; row < rows; ++row)
            width = std::max(width, metrics.horizontalAdvance(m_model->cellText(row, column)));
        shown->setColumnWidth(column, std::min(width, metrics.averageCharWidth() * 40) + metrics.height());
    }
}

bool ENTViewer::keepsMouse(QPointF) const
{
    return false;
}

QString ENTViewer::accessibleText() const
{
    return QStringLiteral("%1 records").arg(m_model->rowCount());
}

// What a user asks for -----------------------------------------------------------------------------------------

void ENTViewer::say(const QString& text)
{
    if (surface::HostForms* shown = forms())
        shown->messageBox(widget(), text, surface::HostForms::Exclamation, QString());
}

bool ENTViewer::find(HistoryTime moment)
{
    const int row = m_model->rowOf(moment);
    if (row < 0)
        return false;
    if (QTableView* shown = table()) {
        const QModelIndex index = m_model->index(row, 0);
        shown->setCurrentIndex(index);
        shown->scrollTo(index, QAbstractItemView::PositionAtCenter);
    }
    return true;
}

void ENTViewer::askForTime()
{
    const Ref<ENTViewer> alive(this);
    surface::HostForms* shown = forms();
    if (!shown)
        return;
    const QTableView* view = table();
    const int current = view && view->currentIndex().isValid() ? view->currentIndex().row() : 0;
    const HistoryTime near = m_model->timeAt(current).value_or(0);
    const std::optional<QString> text =
        shown->inputBox(widget(), QStringLiteral("Time to find, as 2026-03-02 14:05 or 14:05"),
                        QStringLiteral("Find a time"), near == 0 ? QString() : timeText(near));
    if (!text || text->trimmed().isEmpty() || !isLoaded())
        return;
    const std::optional<HistoryTime> moment = timeFromText(*text, near);
    if (!moment)
        say(QStringLiteral("\"%1\" is no time.").arg(text->left(60)));
    else if (!find(*moment))
        say(QStringLiteral("There are no records."));
}

void ENTViewer::copySelection()
{
    QTableView* shown = table();
    if (!shown || !shown->selectionModel()->hasSelection())
        return;
    const QItemSelectionRange range = shown->selectionModel()->selection().front();
    QGuiApplication::clipboard()->setText(
        m_model->selectionText(range.top(), range.left(), range.bottom(), range.right()));
}

void ENTViewer::save()
{
    const Ref<ENTViewer> alive(this);
    surface::HostForms* shown = forms();
    if (!shown)
        return;
    surface::FileRequest request;
    request.title = QStringLiteral("Save the whole table");
    request.filter = QStringLiteral("Tables (*.csv)|*.csv|All Files (*.*)|*.*");
    request.defaultExtension = QStringLiteral(".csv");
    request.file = QStringLiteral("records.csv");
    request.isSaved = true;
    const std::optional<QString> file = shown->pickFile(widget(), request);
    if (!file || !isLoaded())
        return;
    CsvExport job(m_model->rows(), *file);
    const QString text = QStringLiteral("Saving the records");
    while (job.step()) {
        shown = forms();
        const double share = double(job.written()) / double(std::max<std::int64_t>(job.count(), 1));
        // The box lets other things happen: the panel may be gone.
        if (!shown || !shown->progress(widget(), text, share) || !isLoaded())
            job.cancel();
    }
    if (surface::HostForms* ending = forms())
        ending->progressEnded();
    if (!isLoaded())
        return;
    if (!job.error().isEmpty())
        say(QStringLiteral("\"%1\" cannot be written: %2").arg(*file, job.error()));
}

} // namespace zan::zandata
