#include "pos/posviewmodel.h"

#include "access/approvalservice.h"
#include "environment/appenvironment.h"
#include "money/currency.h"
#include "money/numberentry.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "money/tolerances.h"
#include "receipts/receipthardwareerror.h"
#include "records/category.h"
#include "records/heldsaleitem.h"
#include "startup/sessionstore.h"
#include "staff/staffservice.h"
#include "store/unitofwork.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// A typed amount to the millionth, as typed: the tolerances decide what counts as a change.
// Blank is 0; text that isn't a number is refused.
std::optional<double> typedMoney(const QString& text)
{
    if (text.trimmed().isEmpty())
        return 0.0;
    return NumberEntry::money(text, 6).value;
}

// Differences of amounts typed in cents carry float noise; cut to millionths before comparing.
double difference(double a, double b)
{
    return Rounding::toPlaces(a - b, 6);
}

// For the reads a screen makes whenever it draws: a failure is told, but a success doesn't wipe
// the message of the action before it.
template <class Result, class Read> Result quietly(Result fallback, Read read, std::optional<QString>& failure)
{
    try {
        return read();
    } catch (const Refusal& refusal) {
        failure = refusal.description();
        return fallback;
    }
}

QString nameOrEmpty(const Ref<User>& user)
{
    return user ? user->name() : QString();
}

} // namespace

POSViewModel::POSViewModel(AppEnvironment& environment, SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_environment(environment)
    , m_session(session)
    , m_products(std::make_unique<ProductGridModel>(environment.modelContext(), [this] { return currencySymbol(); }))
    , m_heldSales(std::make_unique<HeldSalesModel>(environment.modelContext()))
{
    ModelContext& context = environment.modelContext();
    context.onChange(this, {&Product::schema(), &Category::schema()}, [this] {
        if (m_writingSale)
            return;
        m_gridStale = true;
        if (m_gridOnShow)
            reloadProducts();
    });
    reloadProducts();
}

POSViewModel::~POSViewModel() = default;

void POSViewModel::setGridOnShow(bool onShow)
{
    m_gridOnShow = onShow;
    if (onShow && m_gridStale)
        reloadProducts();
}

void POSViewModel::reloadProducts()
{
    m_gridStale = false;
    // Any save in the program lands here; its success mustn't wipe a message on show.
    if (const std::optional<QString> failure = storeFailure([this] { m_products->reload(); }))
        setErrorMessage(failure);
}

Ref<User> POSViewModel::user() const
{
    return m_session.currentUser();
}

Ref<AppSettings> POSViewModel::settings() const
{
    return m_session.settings();
}

QString POSViewModel::currencySymbol() const
{
    const Ref<AppSettings> current = settings();
    return current ? current->currencySymbol() : Currency::fixedSign;
}

QString POSViewModel::money(double amount) const
{
    return Currency::format(amount, currencySymbol());
}

QString POSViewModel::discountText(double amount)
{
    return amount == 0 ? QString() : QString::asprintf("%.2f", amount);
}

bool POSViewModel::isTillClosed() const
{
    return !m_session.currentTillShift();
}

void POSViewModel::setCart(const Cart& cart)
{
    const bool discountMoved = cart.saleDiscount() != m_cart.saleDiscount();
    m_cart = cart;
    if (discountMoved)
        assign(m_saleDiscountText, discountText(m_cart.saleDiscount()));
    if (m_paymentSheet)
        m_paymentSheet->setInputs(paymentSheetInputs());
    Q_EMIT cartChanged();
}

const CartLine* POSViewModel::line(const QUuid& lineID) const
{
    const QList<CartLine>& lines = m_cart.lines();
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const CartLine& l) { return l.id == lineID; });
    return found == lines.end() ? nullptr : &*found;
}

void POSViewModel::raise(ApprovalRequest request)
{
    m_approvalRequest = std::move(request);
    Q_EMIT approvalRequested();
}

std::optional<ApprovalRequest> POSViewModel::takeApprovalRequest()
{
    return std::exchange(m_approvalRequest, std::nullopt);
}

// Searching and adding.

void POSViewModel::setSearchText(const QString& text)
{
    if (!replace(m_searchText, text))
        return;
    m_products->setSearchText(text);
    Q_EMIT searchTextChanged();
}

void POSViewModel::setSelectedCategoryID(const std::optional<QUuid>& id)
{
    m_products->setCategoryID(id);
    Q_EMIT fieldsChanged();
}

bool POSViewModel::submitSearch(const QString& text)
{
    const QString code = text.trimmed();
    if (code.isEmpty())
        return false;
    Ref<Product> found;
    if (!writing([&] { found = m_products->productWithCode(code); }) || !found) {
        setSearchText(text);
        return false;
    }
    setSearchText(QString());
    addIfSellable(found);
    return true;
}

void POSViewModel::addIfSellable(const Ref<Product>& product)
{
    Q_ASSERT(product);
    if (!product->isActive()) {
        setErrorMessage(QStringLiteral("%1 is inactive and cannot be sold.").arg(product->name()));
        return;
    }
    addToCart(product);
}

void POSViewModel::addToCart(const Ref<Product>& product)
{
    // An unknown unit reads as each, so it is added at once too.
    if (product->sellingUnit() == SellingUnit::each) {
        Cart changed = m_cart;
        changed.addOrIncrement(product, 1);
        setCart(changed);
        return;
    }
    m_pendingMeasuredProduct = product;
    Q_EMIT sheetsChanged();
}

void POSViewModel::addProductAt(int row)
{
    Ref<Product> product;
    if (writing([&] { product = m_products->product(row); }) && product)
        addIfSellable(product);
}

void POSViewModel::addMeasured(Ref<Product> product, double quantity)
{
    m_pendingMeasuredProduct = nullptr;
    Q_EMIT sheetsChanged();
    if (quantity <= 0)
        return;
    Cart changed = m_cart;
    changed.addOrIncrement(product, quantity);
    setCart(changed);
}

void POSViewModel::editQuantity(const QUuid& lineID)
{
    if (!line(lineID))
        return;
    m_editingQuantityLineID = lineID;
    Q_EMIT sheetsChanged();
}

std::unique_ptr<QuantityEntry> POSViewModel::quantityEntry() const
{
    if (m_pendingMeasuredProduct)
        return std::make_unique<QuantityEntry>(m_pendingMeasuredProduct, m_pendingMeasuredProduct->sellingPrice(),
                                               std::nullopt, currencySymbol());
    if (m_editingQuantityLineID) {
        if (const CartLine* editing = line(*m_editingQuantityLineID))
            return std::make_unique<QuantityEntry>(editing->product, editing->unitPrice(), editing->quantity,
                                                   currencySymbol());
    }
    return nullptr;
}

void POSViewModel::finishQuantityEntry(double quantity)
{
    if (m_pendingMeasuredProduct)
        addMeasured(m_pendingMeasuredProduct, quantity);
    else if (m_editingQuantityLineID)
        setQuantity(*m_editingQuantityLineID, quantity);
}

void POSViewModel::cancelQuantityEntry()
{
    m_pendingMeasuredProduct = nullptr;
    m_editingQuantityLineID.reset();
    Q_EMIT sheetsChanged();
}

// Lines.

void POSViewModel::setQuantity(const QUuid& lineID, double quantity)
{
    m_editingQuantityLineID.reset();
    Q_EMIT sheetsChanged();
    Cart changed = m_cart;
    changed.updateQuantity(lineID, quantity);
    setCart(changed);
}

void POSViewModel::stepQuantity(const QUuid& lineID, double step)
{
    if (const CartLine* stepped = line(lineID)) {
        Cart changed = m_cart;
        changed.updateQuantity(lineID, stepped->quantity + step);
        setCart(changed);
    }
}

void POSViewModel::removeLine(const QUuid& lineID)
{
    Cart changed = m_cart;
    changed.removeLine(lineID);
    setCart(changed);
}

bool POSViewModel::isMeasured(const CartLine& line)
{
    return line.product->sellingUnit() != SellingUnit::each;
}

QString POSViewModel::quantityMenuText(const CartLine& line)
{
    return isMeasured(line) ? QStringLiteral("Change Amount…") : QStringLiteral("Change Quantity…");
}

QString POSViewModel::lineQuantityText(const CartLine& line) const
{
    return QStringLiteral("%1 × %2").arg(Quantity::format(line.quantity, line.product->sellingUnit()),
                                         money(line.unitPrice()));
}

QString POSViewModel::lineAmountText(const CartLine& line) const
{
    return money(Rounding::toCents(line.grossAmount()) - line.lineDiscount);
}

QStringList POSViewModel::lineNotes(const CartLine& line) const
{
    QStringList notes;
    if (line.priceOverride)
        notes << QStringLiteral("price changed");
    if (line.lineDiscount > 0)
        notes << QStringLiteral("-%1 disc.").arg(money(line.lineDiscount));
    return notes;
}

QList<Ref<StaffMember>> POSViewModel::activeStaff()
{
    std::optional<QString> failure;
    auto staff = quietly(QList<Ref<StaffMember>>(), [this] { return m_environment.staffService().activeStaff(); },
                         failure);
    if (failure)
        setErrorMessage(failure);
    return staff;
}

void POSViewModel::setStaff(const QUuid& lineID, const Ref<StaffMember>& staff)
{
    Cart changed = m_cart;
    changed.setStaff(lineID, staff);
    setCart(changed);
}

// Discounts and prices.

bool POSViewModel::setLineDiscount(const QUuid& lineID, const QString& amountText)
{
    const std::optional<double> amount = typedMoney(amountText);
    if (!amount) {
        setErrorMessage(NumberEntry::moneyProblem());
        return false;
    }
    if (!line(lineID))
        return false;
    Cart candidate = m_cart;
    candidate.setLineDiscount(lineID, *amount);
    applyDiscount(candidate, [] {});
    return true;
}

void POSViewModel::applySaleDiscount()
{
    const std::optional<double> typed = typedMoney(m_saleDiscountText);
    if (!typed) {
        setErrorMessage(NumberEntry::moneyProblem());
        return;
    }
    const double amount = std::max(*typed, 0.0);
    if (std::abs(difference(amount, m_cart.saleDiscount())) <= Tolerance::discountLimit)
        return;
    Cart candidate = m_cart;
    candidate.setSaleDiscount(amount);
    applyDiscount(candidate, [this] { assign(m_saleDiscountText, discountText(m_cart.saleDiscount())); });
}

void POSViewModel::applyDiscount(const Cart& candidate, std::function<void()> revert)
{
    const Ref<AppSettings> current = settings();
    if (!current || !ApprovalService::discountNeedsApproval(candidate, user().get(), current.get())) {
        setCart(candidate);
        return;
    }
    ApprovalRequest request;
    request.action = AuditAction::discount;
    request.needsPIN = true;
    request.askReason = true;
    request.reasonRequired = false;
    request.summary = ApprovalService::discountSummary(candidate, *current);
    request.perform = [this, candidate](const Ref<User>& approver, const QString& reason) {
        Cart approved = candidate;
        approved.setDiscountApprovedUpTo(approved.cashierDiscountTotal());
        approved.setDiscountApprovedBy(nameOrEmpty(approver));
        approved.setDiscountReason(reason);
        setCart(approved);
    };
    request.onCancel = std::move(revert);
    raise(std::move(request));
}

QString POSViewModel::usualPriceText(const QUuid& lineID) const
{
    const CartLine* priced = line(lineID);
    return priced ? QStringLiteral("Usual price %1").arg(money(priced->product->sellingPrice())) : QString();
}

bool POSViewModel::changePrice(const QUuid& lineID, const QString& priceText)
{
    const CartLine* priced = line(lineID);
    if (!priced)
        return false;
    if (priceText.trimmed().isEmpty())
        return false;
    const std::optional<double> typed = typedMoney(priceText);
    if (!typed) {
        setErrorMessage(NumberEntry::moneyProblem());
        return false;
    }
    const double price = Rounding::toCents(std::max(*typed, 0.0));
    const Ref<Product> product = priced->product;
    // A return to the usual price never asks.
    const bool changed = std::abs(difference(price, product->sellingPrice())) >= Tolerance::priceChange;
    if (changed && ApprovalService::needsApproval(AuditAction::priceChange, user().get(), settings().get())) {
        ApprovalRequest request;
        request.action = AuditAction::priceChange;
        request.needsPIN = true;
        request.askReason = true;
        request.reasonRequired = false;
        request.summary = QStringLiteral("%1: %2 → %3 each.")
                              .arg(product->name(), money(product->sellingPrice()), money(price));
        request.perform = [this, lineID, price](const Ref<User>& approver, const QString& reason) {
            Cart approved = m_cart;
            approved.setPrice(lineID, price, nameOrEmpty(approver), reason);
            setCart(approved);
        };
        raise(std::move(request));
        return true;
    }
    Cart changedCart = m_cart;
    changedCart.setPrice(lineID, price, QString(), QString());
    setCart(changedCart);
    return true;
}

// The customer.

void POSViewModel::setCustomer(const Ref<Customer>& customer)
{
    Cart changed = m_cart;
    changed.setCustomer(customer);
    setCart(changed);
}

QString POSViewModel::customerHeader() const
{
    const Ref<Customer>& customer = m_cart.customer();
    if (!customer)
        return {};
    if (customer->loyaltyPoints() > 0)
        return QStringLiteral("%1 · %2 pts").arg(customer->name()).arg(customer->loyaltyPoints());
    return customer->name();
}

QList<Ref<Customer>> POSViewModel::customerMatches(const QString& text, int limit)
{
    std::optional<QString> failure;
    auto found = quietly(
        QList<Ref<Customer>>(),
        [&] {
            using Col = Customer::Col;
            const QString query = text.trimmed();
            return m_environment.modelContext().fetch<Customer>(
                FetchDescriptor(query.isEmpty() ? Condition() : Condition(Col::name.contains(query)))
                    .sortedBy(ascending(Col::name))
                    .sortedBy(ascending(Col::id))
                    .limitedTo(limit));
        },
        failure);
    if (failure)
        setErrorMessage(failure);
    return found;
}

QList<TotalsRow> POSViewModel::totals() const
{
    const Ref<AppSettings> current = settings();
    const bool inclusive = current && current->taxInclusivePricing();
    const CartCalculation calculation = m_cart.calculation(inclusive);
    QList<TotalsRow> rows{{QStringLiteral("Subtotal"), money(calculation.subtotal)}};
    if (calculation.lineDiscountTotal > 0)
        rows.append({QStringLiteral("Line Discounts"), QStringLiteral("-") + money(calculation.lineDiscountTotal)});
    if (m_cart.pointsToRedeem() > 0)
        rows.append({QStringLiteral("Points (%1)").arg(m_cart.pointsToRedeem()),
                     QStringLiteral("-") + money(calculation.pointsDiscount)});
    rows.append({inclusive ? QStringLiteral("Tax (incl.)") : QStringLiteral("Tax"), money(calculation.taxTotal)});
    rows.append({QStringLiteral("Total"), money(calculation.total)});
    return rows;
}

void POSViewModel::cancelSale()
{
    setCart(Cart());
}

void POSViewModel::requestNoSale()
{
    ApprovalRequest request;
    request.action = AuditAction::noSale;
    request.needsPIN = ApprovalService::needsApproval(AuditAction::noSale, user().get(), settings().get());
    request.askReason = true;
    request.reasonRequired = true;
    request.summary = QStringLiteral("Opens the cash drawer without a sale — for example to give change. It's "
                                     "recorded in the Audit Log with the reason.");
    request.perform = [this](const Ref<User>& approver, const QString& reason) {
        const Ref<AppSettings> current = settings();
        if (!current || !current->cashDrawerEnabled())
            throw CashDrawerError::notConfigured();
        // A drawer that didn't open leaves no row: the log says what happened, not what was tried.
        m_environment.cashDrawer().openDrawer();
        ModelContext& context = m_environment.modelContext();
        performUnitOfWork(context, [&] {
            m_environment.approvalService().record(AuditAction::noSale, user().get(), nameOrEmpty(approver),
                                                   std::nullopt, QString(), reason, QString());
        });
    };
    raise(std::move(request));
}

// Payment.

PaymentSheetInputs POSViewModel::paymentSheetInputs()
{
    const Ref<AppSettings> current = settings();
    const CartCalculation calculation = m_cart.calculation(current && current->taxInclusivePricing());
    PaymentSheetInputs inputs;
    inputs.total = calculation.total;
    inputs.currencySymbol = currencySymbol();
    inputs.customer = m_cart.customer();
    inputs.settings = current;
    inputs.pointsRedeemed = m_cart.pointsToRedeem();
    inputs.pointsDiscount = calculation.pointsDiscount;
    inputs.discountable = m_cart.discountableAmount();
    if (inputs.customer) {
        // Shown on the sheet only; checkout asks the account again before anything is written.
        AccountsService& accounts = m_environment.accountsService();
        std::optional<QString> failure;
        inputs.accountBalance = quietly(0.0, [&] { return accounts.balance(inputs.customer); }, failure);
        inputs.availableCredit = quietly(
            std::optional<double>(), [&] { return accounts.availableCredit(inputs.customer); }, failure);
    }
    return inputs;
}

bool POSViewModel::startCheckout()
{
    if (isTillClosed() || m_cart.lines().isEmpty())
        return false;
    const bool staffDone = writing([this] {
        StaffService::check(m_cart, !m_environment.staffService().activeStaff().isEmpty());
    });
    if (!staffDone)
        return false;
    if (!m_paymentSheet) {
        PaymentSheetModel::Actions actions{
            [this](qint64 points) { redeemPoints(points); },
            [this](const QList<PaymentInput>& payments) { completeSale(payments); },
            [this] { closePaymentSheet(); },
        };
        m_paymentSheet = new PaymentSheetModel(paymentSheetInputs(), std::move(actions), this);
    }
    Q_EMIT sheetsChanged();
    return true;
}

void POSViewModel::closePaymentSheet()
{
    if (!m_paymentSheet)
        return;
    // Closed from inside its own Complete Sale: it goes once that has returned.
    m_paymentSheet->deleteLater();
    m_paymentSheet = nullptr;
    Q_EMIT sheetsChanged();
}

void POSViewModel::redeemPoints(qint64 points)
{
    const Ref<AppSettings> current = settings();
    const double valuePerPoint = current ? current->loyaltyValuePerPoint() : 0;
    const auto apply = [this, points, valuePerPoint](const QString& approvedBy) {
        Cart changed = m_cart;
        changed.setPointsToRedeem(points > 0 ? points : 0);
        changed.setValuePerPoint(points > 0 ? valuePerPoint : 0);
        changed.setRedemptionApprovedBy(approvedBy);
        setCart(changed);
    };
    if (points > 0 && ApprovalService::needsApproval(AuditAction::redeemPoints, user().get(), current.get())) {
        const Ref<Customer>& customer = m_cart.customer();
        ApprovalRequest request;
        request.action = AuditAction::redeemPoints;
        request.needsPIN = true;
        request.askReason = true;
        request.reasonRequired = false;
        request.summary = QStringLiteral("%1 points (%2 off) for %3.")
                              .arg(points)
                              .arg(money(valuePerPoint * double(points)),
                                   customer ? customer->name() : QStringLiteral("the customer"));
        request.perform = [apply](const Ref<User>& approver, const QString&) { apply(nameOrEmpty(approver)); };
        raise(std::move(request));
        return;
    }
    apply(QString());
}

Ref<Sale> POSViewModel::checkout(const QList<PaymentInput>& payments)
{
    const Ref<AppSettings> current = settings();
    if (!current)
        throw SalesError::emptyCart();
    StaffService::check(m_cart, !m_environment.staffService().activeStaff().isEmpty());
    const Ref<User> cashier = user();
    Ref<Sale> sale;
    {
        // A sale changes only the stock of its own lines; a failed one changes nothing.
        const QScopedValueRollback writing(m_writingSale, true);
        sale = m_environment.salesService().checkout(m_cart, payments, cashier, m_session.currentTillShift(),
                                                     *current);
    }
    QList<Ref<Product>> sold;
    for (const CartLine& soldLine : m_cart.lines())
        sold.append(soldLine.product);
    m_products->refreshStock(sold);
    m_environment.approvalService().recordSale(*sale, m_cart, cashier.get(), *current);
    m_lastCompletedSale = sale;
    setCart(Cart());
    return sale;
}

bool POSViewModel::shouldOpenDrawer(const AppSettings* settings, const QList<PaymentInput>& payments)
{
    if (!settings || !settings->cashDrawerEnabled() || !settings->cashDrawerOpenOnCashSale())
        return false;
    return std::any_of(payments.begin(), payments.end(),
                       [](const PaymentInput& payment) { return payment.method == PaymentMethodType::cash; });
}

bool POSViewModel::completeSale(const QList<PaymentInput>& payments)
{
    Ref<Sale> sale;
    if (!writing([&] { sale = checkout(payments); }))
        return false;
    closePaymentSheet();
    m_showReceiptSheet = true;
    Q_EMIT sheetsChanged();

    const Ref<AppSettings> current = settings();
    QStringList problems;
    if (shouldOpenDrawer(current.get(), payments)) {
        if (const std::optional<QString> failure = storeFailure([this] { m_environment.cashDrawer().openDrawer(); }))
            problems << QStringLiteral("The cash drawer didn't open: %1").arg(*failure);
    }
    if (current && current->printReceiptAutomatically()) {
        const std::optional<QString> failure = storeFailure([&] {
            // No printer chosen is no problem: the receipt sheet offers to print.
            if (const std::optional<InstalledPrinter> printer = m_environment.chosenReceiptPrinter(*current))
                m_environment.receiptPrinter().printReceipt(m_environment.receiptData(*sale, *current),
                                                            current->useThermalReceiptWidth(), printer);
        });
        if (failure)
            problems << QStringLiteral("The receipt didn't print: %1").arg(*failure);
    }
    if (!problems.isEmpty())
        setErrorMessage(QStringLiteral("Sale completed. ") + problems.join(QLatin1Char(' ')));
    return true;
}

void POSViewModel::closeReceiptSheet()
{
    if (replace(m_showReceiptSheet, false))
        Q_EMIT sheetsChanged();
}

// Holds.

bool POSViewModel::holdCurrentSale()
{
    if (!writing([this] { m_environment.salesService().hold(m_cart, user(), QString()); }))
        return false;
    setCart(Cart());
    return true;
}

qint64 POSViewModel::heldSaleCount()
{
    std::optional<QString> failure;
    const qint64 count = quietly(
        qint64(0),
        [this] {
            return m_environment.modelContext().count<HeldSale>(HeldSale::Col::statusRaw == QStringLiteral("active"));
        },
        failure);
    if (failure)
        setErrorMessage(failure);
    return count;
}

QString POSViewModel::heldSalesButtonText()
{
    return QStringLiteral("Held Sales (%1)").arg(heldSaleCount());
}

void POSViewModel::setShowHeldSales(bool show)
{
    if (replace(m_showHeldSales, show))
        Q_EMIT sheetsChanged();
}

void POSViewModel::pickHeldSale(const Ref<HeldSale>& held)
{
    if (m_cart.lines().isEmpty()) {
        recall(held);
        return;
    }
    m_pendingRecall = held;
    Q_EMIT sheetsChanged();
}

QString POSViewModel::replaceCartMessage() const
{
    if (!m_pendingRecall)
        return {};
    return QStringLiteral("Recalling \"%1\" will discard the %2 item(s) in the cart now. Hold the current sale "
                          "first if you want to keep it.")
        .arg(m_pendingRecall->label())
        .arg(m_cart.itemCount());
}

bool POSViewModel::confirmReplaceCart()
{
    const Ref<HeldSale> held = m_pendingRecall;
    return held && recall(held);
}

void POSViewModel::cancelReplaceCart()
{
    m_pendingRecall = nullptr;
    Q_EMIT sheetsChanged();
}

bool POSViewModel::recall(const Ref<HeldSale>& held)
{
    m_pendingRecall = nullptr;
    Q_EMIT sheetsChanged();
    const std::optional<Cart> recalled = m_heldSales->recall(held);
    if (!recalled) {
        setErrorMessage(m_heldSales->errorMessage());
        return false;
    }
    setErrorMessage(std::nullopt);
    setCart(*recalled);
    setShowHeldSales(false);
    return true;
}

bool POSViewModel::cancelHeldSale(const Ref<HeldSale>& held)
{
    const bool cancelled = m_heldSales->cancel(held);
    setErrorMessage(m_heldSales->errorMessage());
    return cancelled;
}

bool POSViewModel::ringUp(const Appointment& appointment)
{
    if (!m_cart.lines().isEmpty()) {
        setErrorMessage(
            QStringLiteral("Finish or hold the sale in progress first, then Ring Up the appointment."));
        return false;
    }
    Cart rung;
    if (!writing([&] { rung = m_environment.staffService().cart(appointment); }))
        return false;
    setCart(rung);
    return true;
}

SaleCommands POSViewModel::commands()
{
    return {
        [this] { cancelSale(); },
        [this] { Q_EMIT focusSearchRequested(); },
        [this] {
            if (!m_cart.lines().isEmpty())
                startCheckout();
        },
        [this] { holdCurrentSale(); },
        [this] {
            if (m_lastCompletedSale && replace(m_showReceiptSheet, true))
                Q_EMIT sheetsChanged();
        },
        [this] { setShowHeldSales(true); },
    };
}
