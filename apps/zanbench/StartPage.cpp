#include "zanbench/StartPage.h"

#include "surface/text/ToolTipText.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zan::host {

namespace {

constexpr int WidestColumn = 420;

} // namespace

StartPage::StartPage(const QList<QAction*>& actions, QWidget* parent)
    : QWidget(parent)
    , m_recent(new QListWidget(this))
    , m_recentTitle(new QLabel(QStringLiteral("Opened lately"), this))
{
    setObjectName(QStringLiteral("startPage"));
    auto* title = new QLabel(QStringLiteral("Live panels for remote data loggers"), this);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    title->setFont(large);
    title->setWordWrap(true);
    title->setMaximumWidth(WidestColumn);
    m_recent->setObjectName(QStringLiteral("recentList"));
    m_recent->setAccessibleName(QStringLiteral("Schemes opened lately"));
    m_recent->setMaximumWidth(WidestColumn);
    connect(m_recent, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { Q_EMIT recentFileChosen(item->data(Qt::UserRole).toString()); });

    auto* column = new QVBoxLayout;
    column->addStretch(1);
    column->addWidget(title);
    column->addSpacing(12);
    for (QAction* action : actions) {
        auto* button = new QPushButton(action->text(), this);
        button->setObjectName(action->objectName() + QStringLiteral("Button"));
        button->setMaximumWidth(WidestColumn);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        column->addWidget(button);
    }
    column->addSpacing(12);
    column->addWidget(m_recentTitle);
    column->addWidget(m_recent, 2);
    column->addStretch(1);
    auto* row = new QHBoxLayout(this);
    row->addStretch(1);
    row->addLayout(column, 2);
    row->addStretch(1);
    setRecentFiles({});
}

void StartPage::setRecentFiles(const QStringList& files)
{
    m_recent->clear();
    for (const QString& file : files) {
        auto* item = new QListWidgetItem(QFileInfo(file).completeBaseName(), m_recent);
        item->setData(Qt::UserRole, file);
        item->setToolTip(surface::plainToolTip(QFileInfo(file).absoluteFilePath()));
    }
    m_recent->setHidden(files.isEmpty());
    m_recentTitle->setHidden(files.isEmpty());
}

} // namespace zan::host
