#pragma once

#include "records/appsettings.h"
#include "records/tillshift.h"
#include "records/user.h"

#include <QObject>

// Who is signed in, the shift the screens see as open, and the store's settings. Screens watch
// the signals; the records themselves are live, so an edit to them needs no signal here.
class SessionStore : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Ref<User> currentUser() const { return m_currentUser; }
    void setCurrentUser(const Ref<User>& user);
    Ref<TillShift> currentTillShift() const { return m_currentTillShift; }
    void setCurrentTillShift(const Ref<TillShift>& shift);
    Ref<AppSettings> settings() const { return m_settings; }
    void setSettings(const Ref<AppSettings>& settings);

    // An unknown role never reads as admin.
    bool isAdmin() const;

Q_SIGNALS:
    void currentUserChanged();
    void currentTillShiftChanged();
    void settingsChanged();

private:
    Ref<User> m_currentUser;
    Ref<TillShift> m_currentTillShift;
    Ref<AppSettings> m_settings;
};
