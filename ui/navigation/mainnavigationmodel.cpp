#include "ui/navigation/mainnavigationmodel.h"

#include "records/appsettings.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "ui/navigation/posactionbus.h"

MainNavigationModel::MainNavigationModel(SessionStore& session, ModelContext& context, POSActionBus& bus,
                                         SectionScreens screens, QObject* parent)
    : QObject(parent)
    , m_session(session)
    , m_bus(bus)
    , m_screens(std::move(screens))
    , m_sections(offeredSections())
    , m_selection(AppSections::landing(m_sections))
{
    // The appointment book comes and goes with its switch in the live settings record.
    connect(&context, &ModelContext::didChange, this, [this](const QSet<QString>& entityNames) {
        if (entityNames.contains(AppSettings::schema().name))
            settingsChanged();
    });
    connect(&m_session, &SessionStore::settingsChanged, this, &MainNavigationModel::settingsChanged);
    connect(&m_bus, &POSActionBus::requestedSectionChanged, this, &MainNavigationModel::takeRequestedSection);
    takeRequestedSection();
}

QList<AppSection> MainNavigationModel::offeredSections() const
{
    const Ref<User> user = m_session.currentUser();
    QList<AppSection> result =
        AppSections::available(user ? user->roleRaw() : QString(), m_session.settings().get());
    result.removeIf([this](AppSection section) { return !m_screens.contains(section); });
    return result;
}

void MainNavigationModel::settingsChanged()
{
    Q_EMIT businessNameChanged();
    refreshSections();
}

void MainNavigationModel::refreshSections()
{
    const QList<AppSection> offered = offeredSections();
    if (offered == m_sections)
        return;
    m_sections = offered;
    Q_EMIT sectionsChanged();
    if (!m_selection || !m_sections.contains(*m_selection))
        setSelection(AppSections::landing(m_sections));
}

void MainNavigationModel::setSelection(std::optional<AppSection> section)
{
    const std::optional<AppSection> allowed =
        AppSections::allowedSelection(section, m_session.isAdmin(), m_sections);
    if (allowed == m_selection)
        return;
    m_selection = allowed;
    Q_EMIT selectionChanged();
}

void MainNavigationModel::requestSelection(AppSection section)
{
    if (section == m_selection)
        return;
    if (!m_leaveCheck) {
        setSelection(section);
        return;
    }
    m_leaveCheck([this, section] { setSelection(section); });
}

void MainNavigationModel::takeRequestedSection()
{
    const std::optional<AppSection> requested = m_bus.requestedSection();
    if (!requested)
        return;
    m_bus.setRequestedSection(std::nullopt);
    if (m_sections.contains(*requested))
        requestSelection(*requested);
}

QString MainNavigationModel::businessName() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return settings ? settings->businessName() : QString();
}

QString MainNavigationModel::userName() const
{
    const Ref<User> user = m_session.currentUser();
    return user ? user->name() : QString();
}

QString MainNavigationModel::roleLabel() const
{
    return UserRoles::label(m_session.isAdmin() ? UserRole::admin : UserRole::cashier);
}

void MainNavigationModel::signOut()
{
    // Only the user goes: an open shift stays open for the next person.
    m_session.setCurrentUser(nullptr);
}
