#include "ui/pos/cartpanelview.h"

#include "environment/appenvironment.h"
#include "pos/posviewmodel.h"
#include "records/heldsale.h"
#include "ui/controls/emptystate.h"
#include "ui/pos/amountsheet.h"
#include "ui/pos/cartlinerow.h"
#include "ui/pos/customerpicker.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

QPushButton* plainButton(const QString& text, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    // Buttons are for the mouse here: the keyboard stays in the scan field.
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

QWidget* totalsRow(QWidget* title, QWidget* value, QWidget* parent)
{
    auto* row = new QWidget(parent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    title->setParent(row);
    value->setParent(row);
    layout->addWidget(title, 1);
    layout->addWidget(value);
    return row;
}

} // namespace

CartPanelView::CartPanelView(AppEnvironment& environment, SessionStore& session, POSViewModel& pos, QWidget* parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_pos(pos)
    , m_customers(environment.accountsService(), environment.modelContext(), session)
    , m_heldSales(plainButton(QString(), this))
    , m_cancelSale(plainButton(QStringLiteral("Cancel sale"), this))
    , m_customer(plainButton(QString(), this))
    , m_scroll(new QScrollArea(this))
    , m_lines(new QVBoxLayout)
    , m_emptyNote(makeEmptyState(QStringLiteral("No items yet"),
                                 QStringLiteral("Scan a barcode, or tap a product, to start a sale."), this))
    , m_totalsAbove(new QVBoxLayout)
    , m_saleDiscount(new QLineEdit(this))
    , m_totalsBelow(new QVBoxLayout)
    , m_total(Theme::label(QString(), Theme::Text::strong, this))
    , m_hold(plainButton(QStringLiteral("Hold"), this))
    , m_pay(plainButton(QStringLiteral("Pay"), this))
    , m_noSale(plainButton(QStringLiteral("No Sale"), this))
{
    setObjectName(QStringLiteral("cartPanel"));
    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Current Sale"), Theme::Text::heading, this), 1);
    m_heldSales->setToolTip(QStringLiteral("Recall a held sale (Ctrl+R)"));
    header->addWidget(m_heldSales);
    m_cancelSale->setToolTip(QStringLiteral("Start again with an empty cart (Ctrl+N)"));
    header->addWidget(m_cancelSale);

    m_customer->setToolTip(QStringLiteral("Choose the customer for this sale (Ctrl+K)"));

    auto* linesHolder = new QWidget(m_scroll);
    auto* holderLayout = new QVBoxLayout(linesHolder);
    holderLayout->setContentsMargins(0, 0, 0, 0);
    holderLayout->setSpacing(0);
    m_lines->setSpacing(0);
    holderLayout->addLayout(m_lines);
    holderLayout->addWidget(m_emptyNote);
    holderLayout->addStretch();
    m_scroll->setWidget(linesHolder);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);

    auto* totals = new QWidget(this);
    Theme::markCard(totals);
    auto* totalsLayout = new QVBoxLayout(totals);
    totalsLayout->setContentsMargins(14, 10, 14, 10);
    totalsLayout->setSpacing(4);
    totalsLayout->addLayout(m_totalsAbove);
    m_saleDiscount->setPlaceholderText(QStringLiteral("0.00"));
    m_saleDiscount->setAccessibleName(QStringLiteral("Sale Discount"));
    m_saleDiscount->setToolTip(QStringLiteral("An amount off the whole sale (Ctrl+D)"));
    m_saleDiscount->setAlignment(Qt::AlignRight);
    m_saleDiscount->setMaximumWidth(120);
    totalsLayout->addWidget(
        totalsRow(Theme::label(QStringLiteral("Sale Discount"), Theme::Text::subtitle, totals), m_saleDiscount, totals));
    totalsLayout->addLayout(m_totalsBelow);
    Theme::setKind(m_total, "total");
    auto* totalTitle = Theme::label(QStringLiteral("Total"), Theme::Text::heading, totals);
    auto* totalRow = new QHBoxLayout;
    totalRow->addWidget(totalTitle, 1);
    totalRow->addWidget(m_total);
    totalsLayout->addLayout(totalRow);

    m_hold->setToolTip(QStringLiteral("Put this sale aside for later (Ctrl+H)"));
    m_noSale->setToolTip(POSViewModel::noSaleHelp());
    m_pay->setToolTip(QStringLiteral("Take payment (Ctrl+Return)"));
    Theme::markPrimary(m_pay);
    m_pay->setMinimumHeight(44);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_hold);
    buttons->addWidget(m_noSale);
    buttons->addWidget(m_pay, 2);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(10);
    layout->addLayout(header);
    layout->addWidget(m_customer);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(totals);
    layout->addLayout(buttons);

    connect(&m_pos, &POSViewModel::cartChanged, this, &CartPanelView::showCart);
    connect(&m_pos, &ViewModel::fieldsChanged, this, [this] {
        if (m_saleDiscount->text() != m_pos.saleDiscountText())
            m_saleDiscount->setText(m_pos.saleDiscountText());
    });
    connect(m_saleDiscount, &QLineEdit::editingFinished, this, &CartPanelView::applySaleDiscount);
    connect(m_saleDiscount, &QLineEdit::returnPressed, this, &CartPanelView::done);
    connect(m_customer, &QPushButton::clicked, this, &CartPanelView::showCustomerPicker);
    connect(m_cancelSale, &QPushButton::clicked, this, [this] {
        m_pos.cancelSale();
        Q_EMIT done();
    });
    connect(m_heldSales, &QPushButton::clicked, this, &CartPanelView::heldSalesRequested);
    connect(m_hold, &QPushButton::clicked, this, [this] {
        m_pos.holdCurrentSale();
        Q_EMIT done();
    });
    connect(m_pay, &QPushButton::clicked, this, &CartPanelView::payRequested);
    connect(m_noSale, &QPushButton::clicked, &m_pos, &POSViewModel::requestNoSale);
    environment.modelContext().onChange(this, {&HeldSale::schema()}, [this] { refreshHeldCount(); });
    refreshHeldCount();
    showCart();
}

QList<CartLineRow*> CartPanelView::rows() const
{
    QList<CartLineRow*> ordered;
    for (int i = 0; i < m_lines->count(); ++i)
        ordered.append(static_cast<CartLineRow*>(m_lines->itemAt(i)->widget()));
    return ordered;
}

void CartPanelView::showCart()
{
    const Ref<Customer>& customer = m_pos.cart().customer();
    m_customer->setText(customer ? m_pos.customerHeader() : QStringLiteral("Add Customer"));
    showLines();
    showTotals();
    const bool hasLines = m_pos.canHoldOrPay();
    m_hold->setEnabled(hasLines);
    m_pay->setEnabled(hasLines);
    if (m_saleDiscount->text() != m_pos.saleDiscountText() && !m_saleDiscount->hasFocus())
        m_saleDiscount->setText(m_pos.saleDiscountText());
}

void CartPanelView::showLines()
{
    const QList<CartLine>& lines = m_pos.cart().lines();
    QSet<QUuid> present;
    CartLineRow* added = nullptr;
    for (int i = 0; i < lines.size(); ++i) {
        const CartLine& line = lines[i];
        present.insert(line.id);
        CartLineRow*& row = m_rows[line.id];
        if (!row) {
            row = new CartLineRow(m_pos, line, m_scroll->widget());
            connect(row, &CartLineRow::chosen, this, [this](const QUuid& id) { select(id); });
            connect(row, &CartLineRow::discountRequested, this, &CartPanelView::askLineDiscount);
            connect(row, &CartLineRow::priceRequested, this, &CartPanelView::askPrice);
            connect(row, &CartLineRow::done, this, &CartPanelView::done);
            m_lines->insertWidget(i, row);
            added = row;
        } else {
            row->showLine(line);
            if (m_lines->indexOf(row) != i)
                m_lines->insertWidget(i, row);
        }
    }
    for (auto it = m_rows.begin(); it != m_rows.end();) {
        if (present.contains(it.key())) {
            ++it;
            continue;
        }
        m_lines->removeWidget(it.value());
        it.value()->hide();
        it.value()->deleteLater();
        it = m_rows.erase(it);
    }
    m_emptyNote->setVisible(lines.isEmpty());
    if (added)
        select(added->lineID());
    else if (!m_selected || !m_rows.contains(*m_selected))
        select(lines.isEmpty() ? std::nullopt : std::optional<QUuid>(lines.last().id));
}

void CartPanelView::select(const std::optional<QUuid>& lineID)
{
    if (m_selected)
        if (CartLineRow* old = m_rows.value(*m_selected))
            old->setSelected(false);
    m_selected = lineID;
    if (!lineID)
        return;
    if (CartLineRow* chosen = m_rows.value(*lineID)) {
        chosen->setSelected(true);
        // The row may not be laid out yet: once it is, it is brought into view.
        QMetaObject::invokeMethod(this, [this, id = *lineID] {
            if (CartLineRow* shown = m_rows.value(id))
                m_scroll->ensureWidgetVisible(shown, 0, 0);
        }, Qt::QueuedConnection);
    }
}

void CartPanelView::moveSelection(int step)
{
    const QList<CartLine>& lines = m_pos.cart().lines();
    if (lines.isEmpty())
        return;
    qsizetype at = lines.size() - 1;
    for (qsizetype i = 0; m_selected && i < lines.size(); ++i) {
        if (lines[i].id == *m_selected)
            at = i;
    }
    select(lines[std::clamp<qsizetype>(at + step, 0, lines.size() - 1)].id);
}

void CartPanelView::changeSelectedQuantity()
{
    if (m_selected)
        m_pos.editQuantity(*m_selected);
}

void CartPanelView::discountSelectedLine()
{
    if (m_selected)
        askLineDiscount(*m_selected);
}

void CartPanelView::removeSelectedLine()
{
    if (m_selected)
        m_pos.removeLine(*m_selected);
}

void CartPanelView::askLineDiscount(const QUuid& lineID)
{
    const CartLineRow* line = row(lineID);
    if (!line)
        return;
    auto* sheet = new AmountSheet(QStringLiteral("Line Discount"), line->nameLabel()->text(),
                                  QStringLiteral("Amount off"), QString(),
                                  [this, lineID](const QString& text) { return m_pos.setLineDiscount(lineID, text); },
                                  window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::finished, this, &CartPanelView::done);
    sheet->open();
}

void CartPanelView::askPrice(const QUuid& lineID)
{
    if (!row(lineID))
        return;
    auto* sheet = new AmountSheet(QStringLiteral("Change Price"), m_pos.usualPriceText(lineID),
                                  QStringLiteral("New price each"), QString(),
                                  [this, lineID](const QString& text) { return m_pos.changePrice(lineID, text); },
                                  window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::finished, this, &CartPanelView::done);
    sheet->open();
}

void CartPanelView::applySaleDiscount()
{
    // Return and then the focus leaving both finish the edit: the second finds nothing new.
    const QString text = m_saleDiscount->text();
    if (text == m_pos.saleDiscountText())
        return;
    m_pos.setSaleDiscountText(text);
    m_pos.applySaleDiscount();
}

void CartPanelView::showCustomerPicker()
{
    auto* picker = CustomerPicker::popUp(
        m_customers, [this](const Ref<Customer>& customer) { m_pos.setCustomer(customer); }, m_customer);
    connect(picker, &QObject::destroyed, this, &CartPanelView::done);
}

void CartPanelView::showTotals()
{
    QList<TotalsRow> above;
    QList<TotalsRow> below;
    for (const TotalsRow& total : m_pos.totals()) {
        if (total.title == QStringLiteral("Total"))
            m_total->setText(total.amount);
        else if (total.title == QStringLiteral("Subtotal") || total.title == QStringLiteral("Line Discounts"))
            above.append(total);
        else
            below.append(total);
    }
    fillTotals(m_totalsAbove, m_aboveLines, above);
    fillTotals(m_totalsBelow, m_belowLines, below);
}

void CartPanelView::fillTotals(QVBoxLayout* layout, QList<TotalsLine>& lines, const QList<TotalsRow>& rows)
{
    while (lines.size() > rows.size())
        delete lines.takeLast().row;
    while (lines.size() < rows.size()) {
        auto* title = Theme::label(QString(), Theme::Text::subtitle, this);
        auto* amount = Theme::label(QString(), Theme::Text::strong, this);
        auto* row = totalsRow(title, amount, this);
        layout->addWidget(row);
        lines.append({row, title, amount});
    }
    for (qsizetype i = 0; i < rows.size(); ++i) {
        lines[i].title->setText(rows[i].title);
        lines[i].amount->setText(rows[i].amount);
    }
}

QList<TotalsRow> CartPanelView::shownTotals() const
{
    QList<TotalsRow> shown;
    for (const TotalsLine& line : m_aboveLines)
        shown.append({line.title->text(), line.amount->text()});
    shown.append({QStringLiteral("Sale Discount"), m_saleDiscount->text()});
    for (const TotalsLine& line : m_belowLines)
        shown.append({line.title->text(), line.amount->text()});
    shown.append({QStringLiteral("Total"), m_total->text()});
    return shown;
}

void CartPanelView::refreshHeldCount()
{
    m_heldSales->setText(m_pos.heldSalesButtonText());
}
