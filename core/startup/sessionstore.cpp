#include "startup/sessionstore.h"

#include "records/enums.h"

void SessionStore::setCurrentUser(const Ref<User>& user)
{
    if (user == m_currentUser)
        return;
    m_currentUser = user;
    Q_EMIT currentUserChanged();
}

void SessionStore::setCurrentTillShift(const Ref<TillShift>& shift)
{
    if (shift == m_currentTillShift)
        return;
    m_currentTillShift = shift;
    Q_EMIT currentTillShiftChanged();
}

void SessionStore::setSettings(const Ref<AppSettings>& settings)
{
    if (settings == m_settings)
        return;
    m_settings = settings;
    Q_EMIT settingsChanged();
}

bool SessionStore::isAdmin() const
{
    return m_currentUser && UserRoles::fromRaw(m_currentUser->roleRaw()) == UserRole::admin;
}
