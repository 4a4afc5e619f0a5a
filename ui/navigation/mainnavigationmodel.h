#pragma once

#include "ui/navigation/appsection.h"
#include "ui/navigation/editingscreen.h"
#include "ui/navigation/sectionscreens.h"

#include <QObject>

class ModelContext;
class POSActionBus;
class SessionStore;

// The main window's state for the signed-in user: which sections the sidebar offers and which is
// selected. Made anew for each sign-in.
class MainNavigationModel : public QObject {
    Q_OBJECT

public:
    MainNavigationModel(SessionStore& session, ModelContext& context, POSActionBus& bus,
                        SectionScreens screens, QObject* parent = nullptr);

    // The sections the user may open and that have a screen, in sidebar order.
    QList<AppSection> sections() const { return m_sections; }
    std::optional<AppSection> selection() const { return m_selection; }
    const SectionScreens& screens() const { return m_screens; }
    // Lands elsewhere when the section isn't the user's to open.
    void setSelection(std::optional<AppSection> section);
    // A section the person asked for, in the sidebar or through a screen: the screen on show is
    // asked first, through the check, whether it may be left.
    void requestSelection(AppSection section);
    void setLeaveCheck(EditingScreen::LeaveCheck check) { m_leaveCheck = std::move(check); }

    // Heads the sidebar; empty until the settings are loaded.
    QString businessName() const;
    QString userName() const;
    QString roleLabel() const;
    void signOut();

Q_SIGNALS:
    void sectionsChanged();
    void businessNameChanged();
    void selectionChanged();

private:
    QList<AppSection> offeredSections() const;
    void settingsChanged();
    void refreshSections();
    void takeRequestedSection();

    SessionStore& m_session;
    POSActionBus& m_bus;
    SectionScreens m_screens;
    QList<AppSection> m_sections;
    std::optional<AppSection> m_selection;
    EditingScreen::LeaveCheck m_leaveCheck;
};
