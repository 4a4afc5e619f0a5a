#include "ui/rootview.h"

#include "environment/appenvironment.h"
#include "records/user.h"
#include "startup/sessionstore.h"
#include "store/storeerror.h"

RootView::RootView(AppEnvironment& environment, SessionStore& session, ScreenFactories factories,
                   QWidget* parent)
    : QStackedWidget(parent)
    , m_environment(environment)
    , m_session(session)
    , m_factories(std::move(factories))
{
    Q_ASSERT(m_factories.firstRunSetup && m_factories.signIn && m_factories.mainNavigation);
    connect(&m_environment.modelContext(), &ModelContext::didChange, this,
            [this](const QSet<QString>& names) {
                if (names.contains(User::schema().name))
                    evaluate();
            });
    // Another person means another main window: nothing of the last one's may carry over.
    connect(&m_session, &SessionStore::currentUserChanged, this, [this] { evaluate(true); });
    evaluate();
}

void RootView::evaluate(bool userChanged)
{
    if (!anyUserExists())
        present(Screen::firstRunSetup, false);
    else if (m_session.currentUser())
        present(Screen::mainNavigation, userChanged);
    else
        present(Screen::signIn, false);
}

bool RootView::hasUnsavedEdits() const
{
    return EditingScreen::hasUnsavedEdits(m_current);
}

void RootView::askToLeave(std::function<void()> proceed)
{
    EditingScreen::askToLeave(m_current, std::move(proceed));
}

bool RootView::anyUserExists() const
{
    try {
        return m_environment.modelContext().count<User>() > 0;
    } catch (const Refusal&) {
        // Unreadable users must not open first-run setup, which would make a second admin.
        return true;
    }
}

void RootView::present(Screen screen, bool anew)
{
    if (m_current && screen == m_screen && !anew)
        return;
    const ScreenFactory& factory = screen == Screen::firstRunSetup ? m_factories.firstRunSetup
                                   : screen == Screen::signIn      ? m_factories.signIn
                                                                   : m_factories.mainNavigation;
    QWidget* next = factory();
    addWidget(next);
    setCurrentWidget(next);
    if (m_current) {
        removeWidget(m_current);
        // The old screen may be the one whose button changed the session, still in its handler.
        m_current->deleteLater();
    }
    m_current = next;
    m_screen = screen;
}
