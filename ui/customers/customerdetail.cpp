#include "ui/customers/customerdetail.h"

#include "customers/loyaltyservice.h"
#include "environment/appenvironment.h"
#include "ui/access/approvalsheet.h"
#include "money/currency.h"
#include "store/storeerror.h"
#include "ui/controls/asktodelete.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/formfooter.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/readingorder.h"
#include "ui/controls/savekey.h"
#include "ui/controls/scrollpage.h"
#include "ui/controls/tables.h"
#include "ui/customers/adjustpointssheet.h"
#include "ui/customers/openingbalancesheet.h"
#include "ui/customers/receiveaccountpaymentsheet.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {
// Long histories scroll inside their table, so the sections below stay within reach.
constexpr int visibleRows = 10;
// Every table here has its date and details first and its amounts after them, set to the right.
constexpr int firstAmountColumn = 2;
const QColor voidedColour(0x8a, 0x94, 0x9f);

// The histories give their room to the details; a purchase keeps its time, to tell a day's apart.
QString dateText(const QDateTime& moment, bool withTime = false)
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale.toString(moment.toLocalTime(),
                           withTime ? QStringLiteral("MMM d, yyyy h:mm AP") : QStringLiteral("MMM d, yyyy"));
}

QTableWidget* makeTable(const QStringList& headers, const QString& name, QWidget* parent)
{
    auto* table = makeHistoryTable(static_cast<int>(headers.size()), name, parent);
    for (int column = 0; column < headers.size(); ++column) {
        auto* item = new QTableWidgetItem(headers[column]);
        item->setTextAlignment(column >= firstAmountColumn ? Qt::AlignRight | Qt::AlignVCenter
                                                           : Qt::AlignLeft | Qt::AlignVCenter);
        table->setHorizontalHeaderItem(column, item);
    }
    // The details column takes what the dates and amounts leave.
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    return table;
}
} // namespace

CustomerDetail::CustomerDetail(AppEnvironment& environment, SessionStore& session, const Ref<Customer>& customer,
                               QWidget* parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_accounts(environment.accountsService())
    , m_session(session)
    , m_approvals(environment.approvalService(), environment.accountsService(), session)
    , m_model(m_accounts, environment.loyaltyService(), environment.modelContext(), session, customer)
{
    using Model = CustomerDetailModel;
    m_title = Theme::label(QString(), Theme::Text::title, this);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_footer = new FormFooter(QStringLiteral("Delete Customer…"), this);
    m_delete = m_footer->deleteButton();
    m_save = m_footer->saveButton();
    m_error = m_footer->errorLabel();
    m_creditLimitError = new ErrorLabel(this);

    QScrollArea* scroll = makeSectionScroll(
        {contactSection(), loyaltySection(), accountSection(), purchaseSection()}, 20, this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(m_title);
    layout->addWidget(scroll, 1);
    layout->addWidget(m_footer);

    connect(m_save, &QPushButton::clicked, this, &CustomerDetail::save);
    // A new customer saved, at once or once an admin approved, can have points and be deleted.
    connect(&m_model, &Model::fieldsChanged, this, &CustomerDetail::showActions);
    connect(&m_model, &Model::customerDeleted, this, &CustomerDetail::customerDeleted);
    connect(m_delete, &QPushButton::clicked, this, &CustomerDetail::confirmDelete);
    connect(&m_model, &Model::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    // Changes while the screen is hidden wait until it is shown again.
    auto* lazyRefresh = new LazyRefresh(this, [this] { refresh(); });
    connect(&m_model, &Model::detailChanged, lazyRefresh, &LazyRefresh::request);
    connect(&m_session, &SessionStore::settingsChanged, this, &CustomerDetail::refresh);
    m_purchasesShown = Model::purchasePageSize;
    refresh();
}

Section* CustomerDetail::contactSection()
{
    using Model = CustomerDetailModel;
    auto* section = new Section(Model::contactSection());
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    const QStringList titles{Model::nameTitle(), Model::phoneTitle(), Model::emailTitle(),
                             Model::addressTitle()};
    for (int index = 0; index < titles.size(); ++index) {
        auto* edit = new QLineEdit(section);
        auto* cell = new QVBoxLayout;
        addLabelledField(cell, titles[index], edit);
        grid->addLayout(cell, index / 2, index % 2);
        m_fields.append(edit);
        // Return saves, as "Save" would.
        connect(edit, &QLineEdit::returnPressed, m_save, &QPushButton::click);
    }
    section->content()->addLayout(grid);
    field(Field::phone)->setInputMethodHints(Qt::ImhDialableCharactersOnly);
    field(Field::email)->setInputMethodHints(Qt::ImhEmailCharactersOnly);
    bindText(field(Field::name), m_model, &Model::name, &Model::setName, &Model::fieldsChanged);
    bindText(field(Field::phone), m_model, &Model::phone, &Model::setPhone, &Model::fieldsChanged);
    bindText(field(Field::email), m_model, &Model::email, &Model::setEmail, &Model::fieldsChanged);
    bindText(field(Field::address), m_model, &Model::address, &Model::setAddress, &Model::fieldsChanged);
    return section;
}

Section* CustomerDetail::loyaltySection()
{
    using Model = CustomerDetailModel;
    auto* section = new Section(Model::loyaltySection());
    QVBoxLayout* card = section->content();
    auto* figures = new QHBoxLayout;
    m_pointsBalance = addFigure(figures, Model::pointsBalanceTitle(), section);
    figures->addStretch();
    m_adjustPoints = new QPushButton(Model::adjustPointsTitle(), section);
    figures->addWidget(m_adjustPoints, 0, Qt::AlignBottom);
    card->addLayout(figures);
    card->addWidget(Theme::label(Model::pointsHistoryTitle(), Theme::Text::strong, section));
    m_pointsHistory = makeTable({QStringLiteral("Date"), QStringLiteral("Details"), QStringLiteral("Points"),
                                 QStringLiteral("Balance")},
                                Model::pointsHistoryTitle(), section);
    m_noPoints = Theme::label(Model::noPointsMessage(), Theme::Text::note, section);
    card->addWidget(m_pointsHistory);
    card->addWidget(m_noPoints);
    connect(m_adjustPoints, &QPushButton::clicked, this, &CustomerDetail::openAdjustPoints);
    return section;
}

Section* CustomerDetail::accountSection()
{
    using Model = CustomerDetailModel;
    auto* section = new Section(Model::accountSection());
    QVBoxLayout* card = section->content();

    m_allowCredit = new QCheckBox(Model::allowCreditTitle(), section);
    m_allowCredit->setChecked(m_model.allowCredit());
    card->addWidget(m_allowCredit);
    auto* limit = new QLineEdit(section);
    limit->setPlaceholderText(QStringLiteral("0.00"));
    limit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    limit->setAlignment(Qt::AlignRight);
    limit->setFixedWidth(160);
    m_fields.append(limit);
    auto* limitCaption = new QLabel(Model::creditLimitTitle(), section);
    limitCaption->setBuddy(limit);
    limit->setAccessibleName(Model::creditLimitTitle());
    auto* limitRow = new QHBoxLayout;
    limitRow->setSpacing(10);
    limitRow->addWidget(limitCaption);
    limitRow->addWidget(limit);
    limitRow->addWidget(Theme::label(Model::creditLimitNote(), Theme::Text::note, section));
    limitRow->addStretch();
    card->addLayout(limitRow);
    m_creditLimitError->setParent(section);
    card->addWidget(m_creditLimitError);
    connect(&m_model, &Model::fieldsChanged, m_creditLimitError,
            [this] { m_creditLimitError->setMessage(m_model.creditLimitProblem()); });
    connect(limit, &QLineEdit::returnPressed, m_save, &QPushButton::click);
    bindText(limit, m_model, &Model::creditLimitText, &Model::setCreditLimitText, &Model::fieldsChanged);
    connect(m_allowCredit, &QCheckBox::toggled, &m_model, &Model::setAllowCredit);
    connect(&m_model, &Model::fieldsChanged, m_allowCredit,
            [this] { m_allowCredit->setChecked(m_model.allowCredit()); });

    auto* figures = new QHBoxLayout;
    figures->setSpacing(40);
    m_balanceOwed = addFigure(figures, Model::balanceOwedTitle(), section);
    m_availableCredit = addFigure(figures, QStringLiteral("Available Credit"), section);
    figures->addStretch();
    // One above the other: side by side they would push the card wider than the screen.
    auto* actions = new QVBoxLayout;
    actions->setSpacing(6);
    m_receivePayment = new QPushButton(Model::receivePaymentTitle(), section);
    actions->addWidget(m_receivePayment);
    m_openingBalance = new QPushButton(Model::openingBalanceTitle(), section);
    actions->addWidget(m_openingBalance);
    figures->addLayout(actions);
    for (QLabel* figure : {m_balanceOwed, m_availableCredit})
        figures->setAlignment(figure->parentWidget(), Qt::AlignTop);
    card->addSpacing(4);
    card->addLayout(figures);
    m_age = Theme::label(QString(), Theme::Text::note, section);
    m_age->setWordWrap(true);
    card->addWidget(m_age);

    card->addWidget(Theme::label(Model::accountHistoryTitle(), Theme::Text::strong, section));
    m_accountHistory =
        makeTable({QStringLiteral("Date"), QStringLiteral("Details"), QStringLiteral("Charges"),
                   QStringLiteral("Payments"), QStringLiteral("Balance")},
                  Model::accountHistoryTitle(), section);
    m_noAccountHistory = Theme::label(QStringLiteral("No account activity yet."), Theme::Text::note, section);
    card->addWidget(m_accountHistory);
    card->addWidget(m_noAccountHistory);
    connect(m_receivePayment, &QPushButton::clicked, this, &CustomerDetail::openReceivePayment);
    connect(m_openingBalance, &QPushButton::clicked, this, &CustomerDetail::openOpeningBalance);
    return section;
}

Section* CustomerDetail::purchaseSection()
{
    using Model = CustomerDetailModel;
    auto* section = new Section(Model::purchaseSection());
    QVBoxLayout* card = section->content();
    m_purchases =
        makeTable({QStringLiteral("Date"), QStringLiteral("Invoice"), QStringLiteral("Total"), QString()},
                  Model::purchaseSection(), section);
    m_noPurchases = Theme::label(Model::noPurchasesMessage(), Theme::Text::note, section);
    m_morePurchases = new QPushButton(QStringLiteral("Show More"), section);
    card->addWidget(m_purchases);
    card->addWidget(m_noPurchases);
    card->addWidget(m_morePurchases, 0, Qt::AlignLeft);
    connect(m_morePurchases, &QPushButton::clicked, this, [this] {
        refreshPurchases(m_purchasesShown + CustomerDetailModel::purchasePageSize);
        m_purchases->scrollToBottom();
    });
    return section;
}

QLineEdit* CustomerDetail::field(Field which) const
{
    return m_fields.at(static_cast<int>(which));
}

bool CustomerDetail::save()
{
    askAnAdmin(m_approvals.saveCustomer(m_model));
    return !m_model.hasUnsavedEdits();
}

void CustomerDetail::focusName()
{
    focusToReplace(field(Field::name));
}

QString CustomerDetail::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

void CustomerDetail::refresh()
{
    // The saved name, not the one being typed.
    m_title->setText(customer()->name());
    showActions();
    m_model.startReading();
    refreshPoints();
    refreshAccount();
    refreshPurchases(m_purchasesShown);
}

void CustomerDetail::showActions()
{
    // Points and payments need the customer in the store; leaving a new one drops it.
    const bool isNew = m_model.isNew();
    m_adjustPoints->setEnabled(!isNew);
    m_footer->showNewRecord(isNew);
}

void CustomerDetail::refreshPoints()
{
    m_pointsBalance->setText(m_model.pointsBalanceText());
    const QList<Ref<LoyaltyEntry>> entries = m_model.pointsHistory();
    m_pointsHistory->setRowCount(static_cast<int>(entries.size()));
    for (int row = 0; row < entries.size(); ++row) {
        const LoyaltyEntry& entry = *entries[row];
        const QString change =
            (entry.points() > 0 ? QStringLiteral("+") : QString()) + QString::number(entry.points());
        setRowCells(m_pointsHistory, row,
                    {dateText(entry.timestamp()), LoyaltyEntryKinds::description(entry), change,
                     QString::number(entry.balanceAfter())},
                    firstAmountColumn);
    }
    showRows(m_pointsHistory, visibleRows, m_noPoints);
}

void CustomerDetail::refreshAccount()
{
    const double owed = m_model.balanceOwed();
    m_balanceOwed->setText(money(owed));
    // Nothing owed, nothing to take: the account can't be paid into credit.
    m_receivePayment->setEnabled(owed > 0 && !m_model.isNew());
    // Once entered it stands in the history below; a customer has only one.
    m_openingBalance->setVisible(m_model.canEnterOpeningBalance());

    std::optional<double> available;
    try {
        available = m_accounts.availableCredit(customer());
    } catch (const Refusal&) {
        // The balance above has already said that the store can't be read.
    }
    const bool onCredit = customer()->allowCredit();
    m_availableCredit->parentWidget()->setVisible(onCredit);
    m_availableCredit->setText(available ? money(*available) : QStringLiteral("No limit"));

    const QList<AccountEntry> entries = m_model.accountHistory();
    m_accountHistory->setRowCount(static_cast<int>(entries.size()));
    for (int row = 0; row < entries.size(); ++row) {
        const AccountEntry& entry = entries[row];
        setRowCells(m_accountHistory, row,
                    {dateText(entry.date), entry.description(),
                     entry.charge != 0 ? money(entry.charge) : QString(),
                     entry.credit != 0 ? money(entry.credit) : QString(), money(entry.balance)},
                    firstAmountColumn);
    }
    showRows(m_accountHistory, visibleRows, m_noAccountHistory);
    // A line breaks between the buckets, never inside one.
    QStringList buckets = m_model.ageText(entries).split(QStringLiteral(" · "), Qt::SkipEmptyParts);
    for (QString& bucket : buckets)
        bucket.replace(u' ', QChar::Nbsp);
    m_age->setText(buckets.join(QStringLiteral(" · ")));
    m_age->setVisible(!m_age->text().isEmpty());
    // Oldest first: the latest line, with the balance now, is the one wanted.
    m_accountHistory->scrollToBottom();
}

void CustomerDetail::refreshPurchases(int count)
{
    const int pageSize = CustomerDetailModel::purchasePageSize;
    QList<Ref<Sale>> sales;
    bool more = false;
    do {
        const QList<Ref<Sale>> page = m_model.purchases(static_cast<int>(sales.size()));
        sales.append(page);
        more = page.size() == pageSize;
    } while (more && sales.size() < count);
    m_purchasesShown = std::max(count, pageSize);

    m_purchases->setRowCount(static_cast<int>(sales.size()));
    for (int row = 0; row < sales.size(); ++row) {
        const Sale& sale = *sales[row];
        const bool voided = sale.isVoided();
        setRowCells(m_purchases, row,
                    {dateText(sale.timestamp(), true), sale.invoiceNumber(), money(sale.total()),
                     voided ? CustomerDetailModel::voidedMark() : QString()},
                    firstAmountColumn);
        if (voided) {
            for (int column = 0; column < m_purchases->columnCount(); ++column)
                m_purchases->item(row, column)->setForeground(voidedColour);
        }
    }
    showRows(m_purchases, visibleRows, m_noPurchases);
    m_morePurchases->setVisible(more);
}

void CustomerDetail::openAdjustPoints()
{
    auto* sheet = new AdjustPointsSheet(m_environment, m_session, customer(), this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

void CustomerDetail::openReceivePayment()
{
    auto* sheet =
        new ReceiveAccountPaymentSheet(m_accounts, m_session, customer(), m_model.balanceOwed(), this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

void CustomerDetail::openOpeningBalance()
{
    auto* sheet = new OpeningBalanceSheet(m_environment, m_session, customer(), this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

void CustomerDetail::confirmDelete()
{
    askToDelete(this, CustomerDetailModel::deleteTitle(),
                m_model.deleteWarnings().join(QStringLiteral("\n\n")),
                [this] { askAnAdmin(m_approvals.deleteCustomer(m_model)); });
}

void CustomerDetail::askAnAdmin(std::optional<ApprovalRequest> request)
{
    if (request)
        ApprovalSheet::raise(std::move(*request), m_environment, this);
}

bool CustomerDetail::focusNextPrevChild(bool next)
{
    return ReadingOrder::focusNext(this, next) || QWidget::focusNextPrevChild(next);
}
