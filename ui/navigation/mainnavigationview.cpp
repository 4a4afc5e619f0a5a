#include "ui/navigation/mainnavigationview.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {
constexpr int sectionRole = Qt::UserRole;
} // namespace

MainNavigationView::MainNavigationView(AppEnvironment& environment, SessionStore& session, POSActionBus& bus,
                                       SectionScreens screens, QWidget* parent)
    : QWidget(parent)
    , m_model(session, environment.modelContext(), bus, std::move(screens))
{
    auto* sidebarPanel = new QWidget(this);
    sidebarPanel->setObjectName(QStringLiteral("sidebar"));
    sidebarPanel->setAttribute(Qt::WA_StyledBackground);
    sidebarPanel->setFixedWidth(232);

    auto* business = Theme::label(m_model.businessName(), Theme::Text::heading, sidebarPanel);
    business->setWordWrap(true);
    business->setContentsMargins(12, 4, 12, 12);

    m_sidebar = new QListWidget(sidebarPanel);
    m_sidebar->setObjectName(QStringLiteral("sectionList"));
    m_sidebar->setAccessibleName(QStringLiteral("Sections"));
    m_sidebar->setFrameShape(QFrame::NoFrame);
    m_sidebar->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto* userName = Theme::label(m_model.userName(), Theme::Text::strong, sidebarPanel);
    userName->setWordWrap(true);
    auto* roleLabel = Theme::label(m_model.roleLabel(), Theme::Text::note, sidebarPanel);
    m_signOut = new QPushButton(QStringLiteral("Sign Out"), sidebarPanel);

    auto* sidebarLayout = new QVBoxLayout(sidebarPanel);
    sidebarLayout->setContentsMargins(12, 16, 12, 16);
    sidebarLayout->setSpacing(4);
    sidebarLayout->addWidget(business);
    sidebarLayout->addWidget(m_sidebar, 1);
    sidebarLayout->addStretch();
    sidebarLayout->addWidget(userName);
    sidebarLayout->addWidget(roleLabel);
    sidebarLayout->addSpacing(8);
    sidebarLayout->addWidget(m_signOut);

    m_content = new QStackedWidget(this);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(sidebarPanel);
    layout->addWidget(m_content, 1);

    m_model.setLeaveCheck([this](std::function<void()> proceed) { askToLeave(std::move(proceed)); });
    connect(m_sidebar, &QListWidget::currentItemChanged, &m_model, [this](QListWidgetItem* item) {
        if (!item)
            return;
        const auto section = static_cast<AppSection>(item->data(sectionRole).toInt());
        // The sidebar stays on the screen on show until that screen may be left.
        showSelection();
        m_model.requestSelection(section);
    });
    connect(&m_model, &MainNavigationModel::businessNameChanged, business,
            [this, business] { business->setText(m_model.businessName()); });
    connect(&m_model, &MainNavigationModel::sectionsChanged, this, &MainNavigationView::showSections);
    connect(&m_model, &MainNavigationModel::selectionChanged, this, &MainNavigationView::showSelection);
    connect(m_signOut, &QPushButton::clicked, this, [this] { askToLeave([this] { m_model.signOut(); }); });
    addSectionKeys();
    showSections();
}

void MainNavigationView::addSectionKeys()
{
    for (int key = 1; key <= sectionKeyCount; ++key) {
        auto* shortcut = new QShortcut(sectionKey(key), this);
        connect(shortcut, &QShortcut::activated, this, [this, key] {
            const QList<AppSection> sections = m_model.sections();
            if (key <= sections.size())
                m_model.requestSelection(sections[key - 1]);
        });
    }
}

QKeySequence MainNavigationView::sectionKey(int key)
{
    return QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_0 + key));
}

void MainNavigationView::showSections()
{
    const QSignalBlocker blocker(m_sidebar);
    m_sidebar->clear();
    for (AppSection section : m_model.sections()) {
        auto* item = new QListWidgetItem(AppSections::title(section), m_sidebar);
        item->setData(sectionRole, static_cast<int>(section));
        if (m_sidebar->count() <= sectionKeyCount)
            item->setToolTip(sectionKey(m_sidebar->count()).toString(QKeySequence::NativeText));
    }
    // Without any section an empty list would only look broken.
    m_sidebar->setVisible(m_sidebar->count() > 0);
    showSelection();
}

void MainNavigationView::showSelection()
{
    const std::optional<AppSection> selection = m_model.selection();
    // Every role has a section, so nothing is chosen only for a moment while sections change.
    if (!selection)
        return;
    const int row = static_cast<int>(m_model.sections().indexOf(*selection));
    {
        const QSignalBlocker blocker(m_sidebar);
        m_sidebar->setCurrentRow(row);
    }
    QWidget*& screen = m_screens[*selection];
    if (!screen) {
        screen = m_model.screens().make(*selection);
        m_content->addWidget(screen);
    }
    m_content->setCurrentWidget(screen);
}

QWidget* MainNavigationView::currentScreen() const
{
    return m_content->currentWidget();
}

bool MainNavigationView::hasUnsavedEdits() const
{
    return EditingScreen::hasUnsavedEdits(currentScreen());
}

void MainNavigationView::askToLeave(std::function<void()> proceed)
{
    EditingScreen::askToLeave(currentScreen(), std::move(proceed));
}

void MainNavigationView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    // With no section the screen itself holds the focus, not "Sign Out": a stray key or a scan
    // must not sign anyone out.
    if (m_sidebar->count() > 0)
        m_sidebar->setFocus();
    else
        setFocus();
}
