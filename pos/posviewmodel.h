#pragma once

#include "access/approvalrequest.h"
#include "pos/paymentsheetmodel.h"
#include "pos/productgridmodel.h"
#include "pos/quantityentry.h"
#include "records/appointment.h"
#include "records/heldsale.h"
#include "records/sale.h"
#include "records/staffmember.h"
#include "selling/cart.h"
#include "selling/heldsalesmodel.h"
#include "viewmodel/viewmodel.h"

#include <QPointer>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>

class AppEnvironment;
class SessionStore;

// The Sale menu's commands as the workspace carries them out; the screen hands them to the menu
// bar while it is on show.
struct SaleCommands {
    std::function<void()> newSale;
    std::function<void()> findProduct;
    std::function<void()> completeSale;
    std::function<void()> holdSale;
    std::function<void()> printReceipt;
    std::function<void()> recallSale;
};

// One line of the totals under the cart.
struct TotalsRow {
    QString title;
    QString amount;
};

// The workspace where sales are rung up: the product grid, the cart, payment, holds and the
// receipt. The cart is a value; an action an admin must approve works on a copy and puts it back
// only once approved. Every refusal lands in errorMessage ("Heads up"), or in the approval
// dialog for what runs inside one.
class POSViewModel : public ViewModel {
    Q_OBJECT

public:
    POSViewModel(AppEnvironment& environment, SessionStore& session, QObject* parent = nullptr);
    ~POSViewModel() override;

    static QString tillClosedTitle() { return QStringLiteral("Till is closed"); }
    static QString tillClosedMessage()
    {
        return QStringLiteral("Open a till shift from Till & Shifts before ringing up sales.");
    }
    static QString noProductsTitle() { return QStringLiteral("No products found"); }
    static QString noProductsMessage() { return QStringLiteral("Try a different search term or scan a barcode."); }
    static QString noSaleHelp()
    {
        return QStringLiteral("Open the cash drawer without a sale (recorded in the Audit Log)");
    }
    static QString replaceCartTitle() { return QStringLiteral("Replace the current cart?"); }

    // While no shift is open the whole workspace gives way to "Till is closed".
    bool isTillClosed() const;

    const Cart& cart() const { return m_cart; }
    ProductGridModel& products() { return *m_products; }
    // The grid reads products again after saves elsewhere only while it is on show, or once it
    // is shown again: a morning of edits on the Products screen costs one read, not one a save.
    void setGridOnShow(bool onShow);

    // The scan and search field; the grid follows each keystroke.
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    std::optional<QUuid> selectedCategoryID() const { return m_products->categoryID(); }
    void setSelectedCategoryID(const std::optional<QUuid>& id);
    // Return in the field: a barcode, or a SKU in any case, adds its product and empties the field.
    // Text that names no product does nothing: the grid already shows what it filters to.
    bool submitSearch() { return submitSearch(m_searchText); }
    // The same for `text` as the field holds it, which the grid may not have followed yet: a
    // scanner types faster than the grid is filtered.
    bool submitSearch(const QString& text);

    // Adding.
    void addIfSellable(const Ref<Product>& product);
    void addToCart(const Ref<Product>& product);
    // A tile of the grid.
    void addProductAt(int row);
    // Measured goods ask for the amount first.
    Ref<Product> pendingMeasuredProduct() const { return m_pendingMeasuredProduct; }
    void addMeasured(Ref<Product> product, double quantity);
    std::optional<QUuid> editingQuantityLineID() const { return m_editingQuantityLineID; }
    void editQuantity(const QUuid& lineID);
    // The amount sheet for the pending product or the line being edited; null when neither.
    std::unique_ptr<QuantityEntry> quantityEntry() const;
    void finishQuantityEntry(double quantity);
    void cancelQuantityEntry();

    // Lines.
    void setQuantity(const QUuid& lineID, double quantity);
    // The minus and plus of a counted line; at 0 the line goes.
    void stepQuantity(const QUuid& lineID, double step);
    void removeLine(const QUuid& lineID);
    static bool isMeasured(const CartLine& line);
    static QString quantityMenuText(const CartLine& line);
    // "2 × ₵5.00", "1.5 kg × ₵12.00": what the row shows beside its amount.
    QString lineQuantityText(const CartLine& line) const;
    // What the line comes to after its own discount, before the sale's.
    QString lineAmountText(const CartLine& line) const;
    static bool isService(const CartLine& line) { return line.product->productType() == ProductType::service; }
    // "price changed", "-₵2.00 disc."; what the row shows under the name.
    QStringList lineNotes(const CartLine& line) const;
    // Who did a service: the active staff, by name.
    QList<Ref<StaffMember>> activeStaff();
    void setStaff(const QUuid& lineID, const Ref<StaffMember>& staff);

    // Discounts and prices. Money is typed as en_US amounts; text that isn't a number is refused.
    bool setLineDiscount(const QUuid& lineID, const QString& amountText);
    QString saleDiscountText() const { return m_saleDiscountText; }
    void setSaleDiscountText(const QString& text) { assign(m_saleDiscountText, text); }
    // Return in the field and leaving it.
    void applySaleDiscount();
    // Raises the approval when the discount is over the limit; `revert` runs when it is cancelled.
    void applyDiscount(const Cart& candidate, std::function<void()> revert);
    QString usualPriceText(const QUuid& lineID) const;
    bool changePrice(const QUuid& lineID, const QString& priceText);

    // The customer.
    void setCustomer(const Ref<Customer>& customer);
    QString customerHeader() const;
    // The picker's list: names containing the text, case aside, by name.
    QList<Ref<Customer>> customerMatches(const QString& text, int limit = 100);

    QList<TotalsRow> totals() const;
    bool canHoldOrPay() const { return !m_cart.lines().isEmpty(); }
    // "Cancel sale": a new empty cart, no questions asked.
    void cancelSale();
    void requestNoSale();

    // An approval waiting for the dialog; the screen takes it and shows it.
    std::optional<ApprovalRequest> takeApprovalRequest();
    bool hasApprovalRequest() const { return m_approvalRequest.has_value(); }

    // Payment.
    bool startCheckout();
    PaymentSheetModel* paymentSheet() const { return m_paymentSheet; }
    void closePaymentSheet();
    PaymentSheetInputs paymentSheetInputs();
    // Sets the points the customer redeems (0 takes them off), asking an admin first where the
    // settings say so.
    void redeemPoints(qint64 points);
    // Throws what checkout refused with; on success the cart starts again.
    Ref<Sale> checkout(const QList<PaymentInput>& payments);
    static bool shouldOpenDrawer(const AppSettings* settings, const QList<PaymentInput>& payments);
    // The sale, then the drawer, then the receipt, so a jammed printer doesn't hold the cash. A
    // drawer or printer failure doesn't undo the sale: it is told after "Sale completed. ".
    bool completeSale(const QList<PaymentInput>& payments);
    Ref<Sale> lastCompletedSale() const { return m_lastCompletedSale; }
    bool showReceiptSheet() const { return m_showReceiptSheet; }
    void closeReceiptSheet();

    // Holds.
    bool holdCurrentSale();
    HeldSalesModel& heldSales() { return *m_heldSales; }
    qint64 heldSaleCount();
    QString heldSalesButtonText();
    bool showHeldSales() const { return m_showHeldSales; }
    void setShowHeldSales(bool show);
    // A row of the list: recalled at once into an empty cart, otherwise after "Replace Cart".
    void pickHeldSale(const Ref<HeldSale>& held);
    Ref<HeldSale> pendingRecall() const { return m_pendingRecall; }
    QString replaceCartMessage() const;
    bool confirmReplaceCart();
    void cancelReplaceCart();
    bool recall(const Ref<HeldSale>& held);
    bool cancelHeldSale(const Ref<HeldSale>& held);

    // An appointment from the book, into an empty cart.
    bool ringUp(const Appointment& appointment);

    SaleCommands commands();
    void clearError() { setErrorMessage(std::nullopt); }

Q_SIGNALS:
    void cartChanged();
    void searchTextChanged();
    void sheetsChanged();
    void approvalRequested();
    void focusSearchRequested();

private:
    void setCart(const Cart& cart);
    void raise(ApprovalRequest request);
    Ref<User> user() const;
    Ref<AppSettings> settings() const;
    QString currencySymbol() const;
    QString money(double amount) const;
    static QString discountText(double amount);
    const CartLine* line(const QUuid& lineID) const;
    void reloadProducts();

    AppEnvironment& m_environment;
    SessionStore& m_session;
    std::unique_ptr<ProductGridModel> m_products;
    std::unique_ptr<HeldSalesModel> m_heldSales;
    Cart m_cart;
    QString m_searchText;
    QString m_saleDiscountText;
    Ref<Sale> m_lastCompletedSale;
    Ref<HeldSale> m_pendingRecall;
    Ref<Product> m_pendingMeasuredProduct;
    std::optional<QUuid> m_editingQuantityLineID;
    QPointer<PaymentSheetModel> m_paymentSheet;
    bool m_showReceiptSheet = false;
    bool m_showHeldSales = false;
    std::optional<ApprovalRequest> m_approvalRequest;
    bool m_writingSale = false; // the grid takes a sale's stock from the cart, not from a reread
    bool m_gridOnShow = true; // until a screen says the grid is hidden
    bool m_gridStale = false;
};
