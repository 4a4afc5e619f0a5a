#pragma once

#include "ui/navigation/appsection.h"

#include <QObject>

#include <functional>
#include <optional>

// Hands the menu commands to whichever screen can carry them out. The POS workspace registers the
// sale actions and the root the backup ones; a menu item reads its action when chosen, and an
// absent action makes the item do nothing.
class POSActionBus : public QObject {
    Q_OBJECT

public:
    using Action = std::function<void()>;

    using QObject::QObject;

    const Action& newSale() const { return m_newSale; }
    void setNewSale(Action action) { m_newSale = std::move(action); }
    const Action& findProduct() const { return m_findProduct; }
    void setFindProduct(Action action) { m_findProduct = std::move(action); }
    const Action& completeSale() const { return m_completeSale; }
    void setCompleteSale(Action action) { m_completeSale = std::move(action); }
    const Action& holdSale() const { return m_holdSale; }
    void setHoldSale(Action action) { m_holdSale = std::move(action); }
    const Action& printReceipt() const { return m_printReceipt; }
    void setPrintReceipt(Action action) { m_printReceipt = std::move(action); }
    const Action& recallSale() const { return m_recallSale; }
    void setRecallSale(Action action) { m_recallSale = std::move(action); }

    // Set while the POS workspace is on screen, so the sale shortcuts do nothing elsewhere.
    bool isPOSWorkspaceActive() const { return m_isPOSWorkspaceActive; }
    void setIsPOSWorkspaceActive(bool active);
    // The new-store sheet shows while this is set and clears it when dismissed.
    bool showNewMarketSheet() const { return m_showNewMarketSheet; }
    void setShowNewMarketSheet(bool show);
    // A section a screen asks the navigation to move to; the navigation clears it once read.
    std::optional<AppSection> requestedSection() const { return m_requestedSection; }
    void setRequestedSection(std::optional<AppSection> section);

    // Off the POS workspace, "Find Product" runs this: the search box of the screen on show, which
    // sets it when shown and clears it when hidden.
    const Action& findOnScreen() const { return m_findOnScreen; }
    void setFindOnScreen(Action action);

    const Action& backUpNow() const { return m_backUpNow; }
    void setBackUpNow(Action action) { m_backUpNow = std::move(action); }
    const Action& restoreFromBackup() const { return m_restoreFromBackup; }
    void setRestoreFromBackup(Action action) { m_restoreFromBackup = std::move(action); }

    // Runs the action when there is one.
    static void run(const Action& action)
    {
        if (action)
            action();
    }

Q_SIGNALS:
    void isPOSWorkspaceActiveChanged(bool active);
    void showNewMarketSheetChanged(bool show);
    void requestedSectionChanged();
    void findOnScreenChanged();

private:
    Action m_newSale;
    Action m_findProduct;
    Action m_completeSale;
    Action m_holdSale;
    Action m_printReceipt;
    Action m_recallSale;
    bool m_isPOSWorkspaceActive = false;
    bool m_showNewMarketSheet = false;
    std::optional<AppSection> m_requestedSection;
    Action m_findOnScreen;
    Action m_backUpNow;
    Action m_restoreFromBackup;
};
