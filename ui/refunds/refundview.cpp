#include "ui/refunds/refundview.h"

#include "environment/appenvironment.h"
#include "money/currency.h"
#include "records/customer.h"
#include "startup/sessionstore.h"
#include "ui/access/approvalsheet.h"
#include "ui/controls/cards.h"
#include "ui/controls/emptystate.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/scrollpage.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/receipts/receiptview.h"
#include "ui/refunds/refundlinerow.h"
#include "ui/style/theme.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {
QStringList methodLabels()
{
    QStringList labels;
    for (PaymentMethodType method : PaymentMethodTypes::all)
        labels << PaymentMethodTypes::label(method);
    return labels;
}

QFrame* hairline(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setStyleSheet(QStringLiteral("color: #eef0f3;"));
    return line;
}
} // namespace

RefundView::RefundView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_session(session)
    , m_model(environment, session)
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(32, 28, 32, 32);
    column->setSpacing(16);
    column->addWidget(Theme::label(QStringLiteral("Process a Refund"), Theme::Text::title, page));

    m_receipt = makeSearchField(QStringLiteral("Receipt number, e.g. INV-20260921-0007"), page);
    m_receipt->setAccessibleName(QStringLiteral("Receipt number"));
    m_find = new QPushButton(QStringLiteral("Find Sale"), page);
    auto* search = new QHBoxLayout;
    search->setSpacing(10);
    search->addWidget(m_receipt, 1);
    search->addWidget(m_find);
    auto* searchRow = new QWidget(page);
    searchRow->setMaximumWidth(640);
    searchRow->setLayout(search);
    search->setContentsMargins(0, 0, 0, 0);
    column->addWidget(searchRow);
    m_error = new ErrorLabel(page);
    column->addWidget(m_error);

    m_pages = new QStackedWidget(page);
    m_pages->addWidget(makeEmptyState(QStringLiteral("Find a receipt to begin"),
                                      QStringLiteral("Enter the invoice number from the original receipt."),
                                      page));
    m_pages->addWidget(salePage());
    column->addWidget(m_pages, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeScrollPage(page, this));

    bindText(m_receipt, m_model, &RefundViewModel::receiptQuery, &RefundViewModel::setReceiptQuery,
             &ViewModel::fieldsChanged);
    bindText(m_reason, m_model, &RefundViewModel::reason, &RefundViewModel::setReason,
             &ViewModel::fieldsChanged);
    connect(m_find, &QPushButton::clicked, &m_model, &RefundViewModel::search);
    connect(m_receipt, &QLineEdit::returnPressed, &m_model, &RefundViewModel::search);
    connect(m_method, &SegmentedControl::currentIndexChanged, this,
            [this](int index) { m_model.setRefundMethod(PaymentMethodTypes::all[size_t(index)]); });
    connect(m_process, &QPushButton::clicked, this, &RefundView::process);
    connect(&m_model, &ViewModel::errorMessageChanged, m_error,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &RefundViewModel::foundSaleChanged, this, &RefundView::showSale);
    connect(&m_model, &RefundViewModel::quantitiesChanged, this, &RefundView::showAmount);
    connect(&m_model, &ViewModel::fieldsChanged, this, &RefundView::showAmount);
    connect(&m_model, &RefundViewModel::completedRefundChanged, this, &RefundView::showReceipt);
    connect(&session, &SessionStore::settingsChanged, this, &RefundView::showSale);
    showSale();
}

QWidget* RefundView::salePage()
{
    auto* card = new Card;
    m_invoice = Theme::label(QString(), Theme::Text::heading, card);
    m_invoice->setTextFormat(Qt::PlainText);
    card->content()->addWidget(m_invoice);
    auto* figures = new QHBoxLayout;
    figures->setSpacing(40);
    m_originalTotal = addFigure(figures, QStringLiteral("Original Total"), card);
    m_customer = addFigure(figures, QStringLiteral("Customer"), card);
    m_customer->setTextFormat(Qt::PlainText);
    figures->addStretch();
    card->content()->addLayout(figures);
    card->content()->addWidget(hairline(card));
    m_lines = new QVBoxLayout;
    m_lines->setSpacing(4);
    card->content()->addLayout(m_lines);
    card->content()->addWidget(hairline(card));

    m_method = new SegmentedControl(methodLabels(), card);
    auto* methodRow = new QVBoxLayout;
    methodRow->setSpacing(6);
    methodRow->addWidget(new QLabel(QStringLiteral("Refund Method"), card));
    methodRow->addWidget(m_method, 0, Qt::AlignLeft);
    card->content()->addLayout(methodRow);
    m_reason = new QLineEdit(card);
    m_reason->setPlaceholderText(QStringLiteral("Reason for refund"));
    m_reason->setAccessibleName(QStringLiteral("Reason for refund"));
    card->content()->addWidget(m_reason);

    auto* foot = new QHBoxLayout;
    m_amount = addFigure(foot, QStringLiteral("Refund Amount"), card);
    foot->addStretch();
    m_process = new QPushButton(QStringLiteral("Process Refund"), card);
    Theme::markPrimary(m_process);
    foot->addWidget(m_process, 0, Qt::AlignBottom);
    card->content()->addLayout(foot);

    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(card);
    layout->addStretch();
    page->setMaximumWidth(760);
    return page;
}

// The cashier types or scans the receipt number at once.
void RefundView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_model.foundSale())
        m_receipt->setFocus();
}

QString RefundView::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

bool RefundView::isShowingSale() const
{
    return m_pages->currentIndex() == 1;
}

void RefundView::showSale()
{
    qDeleteAll(m_lineRows);
    m_lineRows.clear();
    const Ref<Sale> sale = m_model.foundSale();
    m_pages->setCurrentIndex(sale ? 1 : 0);
    if (!sale)
        return;
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    m_invoice->setText(QStringLiteral("%1 · %2").arg(
        sale->invoiceNumber(),
        english.toString(sale->timestamp().toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"))));
    m_originalTotal->setText(money(sale->total()));
    const Ref<Customer> customer = sale->customer();
    m_customer->setText(customer ? customer->name() : QStringLiteral("Walk-in"));
    // Lines already returned in full have nothing left to choose.
    for (const Ref<SaleItem>& item : m_model.lines()) {
        if (item->quantity() - item->returnedQuantity() <= 0)
            continue;
        auto* row = new RefundLineRow(m_model, item, m_lines->parentWidget());
        m_lines->addWidget(row);
        m_lineRows.append(row);
    }
    m_method->setCurrentIndex(int(
        std::find(PaymentMethodTypes::all.begin(), PaymentMethodTypes::all.end(), m_model.refundMethod()) -
        PaymentMethodTypes::all.begin()));
    showAmount();
}

void RefundView::showAmount()
{
    for (RefundLineRow* row : std::as_const(m_lineRows))
        row->refresh();
    m_amount->setText(money(m_model.refundAmount()));
    m_process->setEnabled(m_model.canProcess());
}

void RefundView::process()
{
    if (!m_model.checkRefund())
        return;
    if (!m_model.needsApproval()) {
        m_model.processRefund(nullptr);
        return;
    }
    // A failure shows in the approval sheet, which stays open for the admin, and on the form.
    ApprovalSheet::askPIN(
        AuditAction::refund, m_model.approvalSummary(), m_model,
        [this](const Ref<User>& approver) { return m_model.processRefund(approver); }, m_environment, this);
}

void RefundView::showReceipt()
{
    if (const Ref<Sale> refund = m_model.completedRefund())
        ReceiptView::present(*refund, m_environment, m_session, this);
}
