#pragma once

#include "ui/navigation/editingscreen.h"

#include <QStackedWidget>

#include <functional>

class AppEnvironment;
class SessionStore;

// Chooses the screen from who exists and who is signed in, again whenever either changes: with
// no users at all only first-run setup makes sense, whoever is in the session.
class RootView : public QStackedWidget, public EditingScreen {
    Q_OBJECT

public:
    enum class Screen { firstRunSetup, signIn, mainNavigation };

    // Each call makes a fresh screen, so a new sign-in never sees the last one's state.
    using ScreenFactory = std::function<QWidget*()>;
    struct ScreenFactories {
        ScreenFactory firstRunSetup;
        ScreenFactory signIn;
        ScreenFactory mainNavigation;
    };

    RootView(AppEnvironment& environment, SessionStore& session, ScreenFactories factories,
             QWidget* parent = nullptr);

    Screen screen() const { return m_screen; }

    // Those of the screen on show.
    bool hasUnsavedEdits() const override;
    void askToLeave(std::function<void()> proceed) override;

private:
    void evaluate(bool userChanged = false);
    bool anyUserExists() const;
    void present(Screen screen, bool anew);

    AppEnvironment& m_environment;
    SessionStore& m_session;
    ScreenFactories m_factories;
    Screen m_screen = Screen::signIn;
    QWidget* m_current = nullptr;
};
