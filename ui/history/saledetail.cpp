#include "ui/history/saledetail.h"

#include "environment/appenvironment.h"
#include "money/currency.h"
#include "money/quantity.h"
#include "records/customer.h"
#include "records/payment.h"
#include "records/saleitem.h"
#include "startup/sessionstore.h"
#include "ui/controls/cards.h"
#include "ui/controls/scrollpage.h"
#include "ui/controls/tables.h"
#include "ui/history/voidsalesheet.h"
#include "ui/receipts/receiptview.h"
#include "ui/style/theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
// Long sales scroll inside their table, so the totals stay near.
constexpr int visibleLines = 12;

// What on the left, its amount on the right, with no headers.
QTableWidget* addLineTable(Section* section, const QString& name)
{
    QTableWidget* table = makeHistoryTable(2, name, section);
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    section->content()->addWidget(table);
    return table;
}

QString dateTimeText(const QDateTime& moment)
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale.toString(moment.toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"));
}
} // namespace

SaleDetail::SaleDetail(Ref<Sale> sale, AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_sale(std::move(sale))
    , m_environment(environment)
    , m_session(session)
{
    Q_ASSERT(m_sale);
    m_title = Theme::label(QString(), Theme::Text::title, this);
    m_title->setTextFormat(Qt::PlainText);
    m_when = Theme::label(QString(), Theme::Text::subtitle, this);

    m_voidedBanner = new QWidget(this);
    // A plain widget draws its style sheet background only with this set.
    m_voidedBanner->setAttribute(Qt::WA_StyledBackground);
    Theme::setKind(m_voidedBanner, "alert");
    m_voidedDetails = new QLabel(m_voidedBanner);
    m_voidedDetails->setTextFormat(Qt::PlainText);
    m_voidedDetails->setWordWrap(true);
    auto* banner = new QVBoxLayout(m_voidedBanner);
    banner->setContentsMargins(14, 10, 14, 10);
    banner->setSpacing(4);
    banner->addWidget(Theme::label(QStringLiteral("Voided — not counted in any total"), Theme::Text::strong,
                                   m_voidedBanner));
    banner->addWidget(m_voidedDetails);

    auto* who = new Card(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(6);
    m_cashier = addFigureRow(grid, QStringLiteral("Cashier")).value;
    m_customer = addFigureRow(grid, QStringLiteral("Customer")).value;
    const FigureRow refundReason = addFigureRow(grid, QStringLiteral("Refund Reason"));
    m_refundReasonCaption = refundReason.caption;
    m_refundReason = refundReason.value;
    grid->setColumnStretch(1, 1);
    who->content()->addLayout(grid);

    auto* lines = new Section(QStringLiteral("Items"), this);
    m_lines = addLineTable(lines, QStringLiteral("Items"));
    auto* totals = new QGridLayout;
    totals->setVerticalSpacing(6);
    m_subtotal = addFigureRow(totals, QStringLiteral("Subtotal")).value;
    m_discounts = addFigureRow(totals, QStringLiteral("Discounts")).value;
    m_tax = addFigureRow(totals, QStringLiteral("Tax")).value;
    const FigureRow total = addFigureRow(totals, QStringLiteral("Total"));
    m_total = total.value;
    for (QLabel* figure : {m_subtotal, m_discounts, m_tax, m_total})
        figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* label : {total.caption, total.value})
        Theme::setKind(label, "strong");
    totals->setColumnStretch(0, 1);
    lines->content()->addLayout(totals);

    auto* payments = new Section(QStringLiteral("Payments"), this);
    m_payments = addLineTable(payments, QStringLiteral("Payments"));

    m_reprint = new QPushButton(QStringLiteral("Reprint Receipt"), this);
    m_void = new QPushButton(QStringLiteral("Void Sale…"), this);
    m_voidNote = Theme::label(QString(), Theme::Text::note, this);
    m_voidNote->setTextFormat(Qt::PlainText);
    auto* actions = new QHBoxLayout;
    actions->setSpacing(10);
    actions->addWidget(m_reprint);
    actions->addWidget(m_void);
    actions->addStretch();

    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 12, 12);
    column->setSpacing(12);
    column->addWidget(m_title);
    column->addWidget(m_when);
    column->addWidget(m_voidedBanner);
    column->addWidget(who);
    column->addWidget(lines);
    column->addWidget(payments);
    column->addLayout(actions);
    column->addWidget(m_voidNote);
    column->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeScrollPage(page, this));

    connect(m_reprint, &QPushButton::clicked, this,
            [this] { ReceiptView::present(*m_sale, m_environment, m_session, this); });
    connect(m_void, &QPushButton::clicked, this, &SaleDetail::openVoidSheet);
    refresh();
}

SaleDetail::FigureRow SaleDetail::addFigureRow(QGridLayout* grid, const QString& caption)
{
    const int row = grid->count() / 2;
    auto* name = Theme::label(caption, Theme::Text::note, this);
    auto* value = new QLabel(this);
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setAccessibleName(caption);
    grid->addWidget(name, row, 0, Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(value, row, 1);
    return {name, value};
}

QString SaleDetail::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

std::optional<QString> SaleDetail::voidProblem() const
{
    const std::optional<SalesError> problem = SalesService::voidProblem(
        *m_sale, m_session.currentUser().get(), nullptr, true, m_session.currentTillShift().get());
    return problem ? std::optional<QString>(problem->description()) : std::nullopt;
}

void SaleDetail::refresh()
{
    const Sale& sale = *m_sale;
    m_title->setText(sale.invoiceNumber());
    m_when->setText(dateTimeText(sale.timestamp()));

    m_voidedBanner->setVisible(sale.isVoided());
    if (sale.isVoided()) {
        const std::optional<QDateTime> when = sale.voidedAt();
        m_voidedDetails->setText(QStringLiteral("%1 · %2\nReason: %3")
                                     .arg(sale.voidedByName().value_or(QStringLiteral("—")),
                                          when ? dateTimeText(*when) : QStringLiteral("—"),
                                          sale.voidReason().value_or(QString())));
    }

    const Ref<User> cashier = sale.cashier();
    m_cashier->setText(cashier ? cashier->name() : QStringLiteral("—"));
    const Ref<Customer> customer = sale.customer();
    m_customer->setText(customer ? customer->name() : QStringLiteral("Walk-in"));
    const std::optional<QString> refundReason = sale.refundReason();
    m_refundReason->setText(refundReason.value_or(QString()));
    m_refundReason->setVisible(refundReason.has_value());
    m_refundReasonCaption->setVisible(refundReason.has_value());

    const QList<Ref<SaleItem>> items = sale.items();
    m_lines->setRowCount(int(items.size()));
    for (int row = 0; row < items.size(); ++row) {
        const SaleItem& item = *items[row];
        setRowCells(m_lines, row,
                    {item.productNameSnapshot(),
                     QStringLiteral("%1 x %2").arg(
                         Quantity::format(item.quantity(), SellingUnits::fromRaw(item.sellingUnitRaw())),
                         money(item.unitPrice()))},
                    1);
    }
    showRows(m_lines, visibleLines);
    m_subtotal->setText(money(sale.subtotal()));
    m_discounts->setText(money(-sale.discountTotal()));
    m_tax->setText(money(sale.taxTotal()));
    m_total->setText(money(sale.total()));

    const QList<Ref<Payment>> payments = sale.payments();
    m_payments->setRowCount(int(payments.size()));
    for (int row = 0; row < payments.size(); ++row)
        setRowCells(m_payments, row,
                    {PaymentMethodTypes::label(payments[row]->method()), money(payments[row]->amount())}, 1);
    showRows(m_payments, visibleLines);

    const bool voidable = !sale.isVoided() && !sale.isRefund();
    const std::optional<QString> problem = voidProblem();
    m_void->setVisible(voidable);
    m_void->setEnabled(!problem);
    m_voidNote->setVisible(voidable);
    m_voidNote->setText(problem.value_or(QStringLiteral(
        "Cancels a sale rung up by mistake today: stock goes back and the sale stops counting. "
        "The sale stays here, marked Voided.")));
}

void SaleDetail::openVoidSheet()
{
    auto* sheet = new VoidSaleSheet(
        m_sale, m_environment, m_session, [this] { refresh(); }, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}
