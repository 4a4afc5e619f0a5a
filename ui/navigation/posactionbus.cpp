#include "ui/navigation/posactionbus.h"

void POSActionBus::setIsPOSWorkspaceActive(bool active)
{
    if (active == m_isPOSWorkspaceActive)
        return;
    m_isPOSWorkspaceActive = active;
    Q_EMIT isPOSWorkspaceActiveChanged(active);
}

void POSActionBus::setShowNewMarketSheet(bool show)
{
    if (show == m_showNewMarketSheet)
        return;
    m_showNewMarketSheet = show;
    Q_EMIT showNewMarketSheetChanged(show);
}

void POSActionBus::setRequestedSection(std::optional<AppSection> section)
{
    if (section == m_requestedSection)
        return;
    m_requestedSection = section;
    Q_EMIT requestedSectionChanged();
}

void POSActionBus::setFindOnScreen(Action action)
{
    m_findOnScreen = std::move(action);
    Q_EMIT findOnScreenChanged();
}
