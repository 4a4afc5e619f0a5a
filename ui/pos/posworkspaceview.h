#pragma once

#include "ui/navigation/posactionbus.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class AppEnvironment;
class CartPanelView;
class POSViewModel;
class QAbstractButton;
class QButtonGroup;
class QDialog;
class QHBoxLayout;
class QLineEdit;
class QListView;
class QMessageBox;
class QStackedWidget;
class ProductTileDelegate;
class QuantityEntry;
class SessionStore;

// The counter: the product grid with its category chips and the scan field on one side, the cart
// on the other, and the sheets on top: amount, payment, receipt, held sales. Whenever no sheet is
// open the keyboard rests in the scan field, so a barcode scanner always reaches the cart. While
// no till shift is open the whole screen says so instead.
class POSWorkspaceView : public QWidget {
    Q_OBJECT

public:
    POSWorkspaceView(AppEnvironment& environment, SessionStore& session, POSViewModel& pos, POSActionBus& bus,
                     QWidget* parent = nullptr);
    ~POSWorkspaceView() override;

    POSViewModel& model() { return m_pos; }
    QLineEdit* searchField() const { return m_search; }
    QListView* grid() const { return m_grid; }
    CartPanelView* cartPanel() const { return m_cart; }
    QList<QAbstractButton*> categoryChips() const;
    bool isShowingTillClosed() const;
    bool isShowingNoProducts() const;
    // The sheet on show over the workspace, if any.
    QDialog* openSheet() const;

    // Pay: the checks before payment, then the payment sheet.
    void startCheckout();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeBrowser();
    void addShortcuts();
    void registerCommands();
    void unregisterCommands();
    void showTillState();
    void showChips();
    void showGridState();
    // The sheets follow the view model: each opens while its state asks for it and closes once
    // the state has gone; closing one by hand tells the view model through `closed`, where the sheet doesn't itself.
    void followSheets();
    void follow(QPointer<QDialog>& shown, bool wanted, const std::function<QDialog*()>& make,
                std::function<void()> closed);
    void followPendingRecall();
    // The next customer's first scan, while the last receipt is still up: the receipt makes way
    // and the item goes to the cart, instead of the scan's Return printing the receipt again.
    void takeScansPast(QDialog* sheet);
    void showError();
    void showApproval();
    // Back to the scan field, unless a sheet or a field of the cart has the keyboard.
    void focusScan();
    // What a new sheet or alert opens over: the sheet on top, else the window.
    QWidget* sheetParent() const;

    AppEnvironment& m_environment;
    SessionStore& m_session;
    POSViewModel& m_pos;
    QPointer<POSActionBus> m_bus;
    QStackedWidget* m_pages;
    QLineEdit* m_search;
    // Typing narrows the grid once the keys pause, so a scanner's burst of digits never waits
    // on filtering tens of thousands of products at each one.
    QTimer m_searchPause;
    QHBoxLayout* m_chipRow;
    QButtonGroup* m_chips;
    QStringList m_shownCategories;
    QStackedWidget* m_gridPages;
    QListView* m_grid;
    ProductTileDelegate* m_tiles;
    CartPanelView* m_cart;
    QPointer<QDialog> m_paymentSheet;
    QPointer<QDialog> m_quantitySheet;
    std::unique_ptr<QuantityEntry> m_quantityEntry;
    QPointer<QDialog> m_receiptSheet;
    QPointer<QDialog> m_heldSales;
    QPointer<QMessageBox> m_replaceCart;
    QPointer<QMessageBox> m_alert;
};
