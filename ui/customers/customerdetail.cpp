#include "ui/customers/customerdetail.h"

#include "customers/loyaltyservice.h"
#include "money/currency.h"
#include "store/storeerror.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/customers/adjustpointssheet.h"
#include "ui/customers/receiveaccountpaymentsheet.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {
// Long histories scroll inside their table, so the sections below stay within reach.
constexpr int visibleRows = 10;
// Every table here has its date and details first and its amounts after them, set to the right.
constexpr int firstAmountColumn = 2;
const QColor voidedColour(0x8a, 0x94, 0x9f);

QString dateTimeText(const QDateTime& moment)
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale.toString(moment.toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"));
}

QTableWidget* makeTable(const QStringList& headers, const QString& name, QWidget* parent)
{
    auto* table = new QTableWidget(0, static_cast<int>(headers.size()), parent);
    for (int column = 0; column < headers.size(); ++column) {
        auto* item = new QTableWidgetItem(headers[column]);
        item->setTextAlignment(column >= firstAmountColumn ? Qt::AlignRight | Qt::AlignVCenter
                                                           : Qt::AlignLeft | Qt::AlignVCenter);
        table->setHorizontalHeaderItem(column, item);
    }
    table->setAccessibleName(name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setFocusPolicy(Qt::NoFocus);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Sized to its rows by fitHeight; a growing table would pad its card out.
    table->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(30);
    QHeaderView* header = table->horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    // The details column takes what the dates and amounts leave.
    header->setSectionResizeMode(1, QHeaderView::Stretch);
    return table;
}

void setRow(QTableWidget* table, int row, const QStringList& cells)
{
    for (int column = 0; column < cells.size(); ++column) {
        auto* item = new QTableWidgetItem(cells[column]);
        if (column >= firstAmountColumn)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table->setItem(row, column, item);
    }
}

void fitHeight(QTableWidget* table)
{
    const int rows = std::min(table->rowCount(), visibleRows);
    table->setFixedHeight(table->horizontalHeader()->sizeHint().height() +
                          rows * table->verticalHeader()->defaultSectionSize() + 2);
}

QVBoxLayout* addSection(QVBoxLayout* column, const QString& heading, QWidget* parent)
{
    column->addWidget(Theme::label(heading, Theme::Text::heading, parent));
    auto* card = new QWidget(parent);
    Theme::markCard(card);
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(12);
    column->addWidget(card);
    return layout;
}

// A figure with its caption above it.
QLabel* addFigure(QHBoxLayout* row, const QString& caption, QWidget* parent, QLabel** captionLabel = nullptr)
{
    auto* pair = new QVBoxLayout;
    pair->setSpacing(2);
    auto* title = Theme::label(caption, Theme::Text::note, parent);
    auto* value = Theme::label(QString(), Theme::Text::heading, parent);
    value->setAccessibleName(caption);
    pair->addWidget(title);
    pair->addWidget(value);
    row->addLayout(pair);
    if (captionLabel)
        *captionLabel = title;
    return value;
}
} // namespace

CustomerDetail::CustomerDetail(AccountsService& accounts, LoyaltyService& loyalty, ModelContext& context,
                               SessionStore& session, const Ref<Customer>& customer, QWidget* parent)
    : QWidget(parent)
    , m_accounts(accounts)
    , m_loyalty(loyalty)
    , m_session(session)
    , m_model(accounts, loyalty, context, session, customer)
{
    using Model = CustomerDetailModel;
    m_title = Theme::label(QString(), Theme::Text::title, this);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_delete = new QPushButton(QStringLiteral("Delete Customer…"), this);
    m_save = new QPushButton(Model::saveTitle(), this);
    Theme::markPrimary(m_save);
    m_error = new ErrorLabel(this);

    auto* header = new QHBoxLayout;
    header->setSpacing(10);
    header->addWidget(m_title, 1);
    header->addWidget(m_delete);
    header->addWidget(m_save);

    auto* page = new QWidget;
    auto* sections = new QVBoxLayout(page);
    sections->setContentsMargins(0, 0, 12, 12);
    sections->setSpacing(10);
    for (QWidget* section : {contactSection(), loyaltySection(), accountSection(), purchaseSection()}) {
        sections->addWidget(section);
        sections->addSpacing(10);
    }
    sections->addStretch();
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(page);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addLayout(header);
    layout->addWidget(m_error);
    layout->addWidget(scroll, 1);

    connect(m_save, &QPushButton::clicked, &m_model, &Model::save);
    connect(m_delete, &QPushButton::clicked, this, &CustomerDetail::confirmDelete);
    connect(&m_model, &Model::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::detailChanged, this, [this] {
        if (isVisible())
            refresh();
        else
            m_isStale = true;
    });
    connect(&m_session, &SessionStore::settingsChanged, this, &CustomerDetail::refresh);
    m_purchasesShown = Model::purchasePageSize;
    refresh();
}

QWidget* CustomerDetail::contactSection()
{
    using Model = CustomerDetailModel;
    auto* section = new QWidget;
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    QVBoxLayout* card = addSection(column, Model::contactSection(), section);
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
    card->addLayout(grid);
    field(Field::phone)->setInputMethodHints(Qt::ImhDialableCharactersOnly);
    field(Field::email)->setInputMethodHints(Qt::ImhEmailCharactersOnly);
    bindText(field(Field::name), m_model, &Model::name, &Model::setName, &Model::fieldsChanged);
    bindText(field(Field::phone), m_model, &Model::phone, &Model::setPhone, &Model::fieldsChanged);
    bindText(field(Field::email), m_model, &Model::email, &Model::setEmail, &Model::fieldsChanged);
    bindText(field(Field::address), m_model, &Model::address, &Model::setAddress, &Model::fieldsChanged);
    return section;
}

QWidget* CustomerDetail::loyaltySection()
{
    using Model = CustomerDetailModel;
    auto* section = new QWidget;
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    QVBoxLayout* card = addSection(column, Model::loyaltySection(), section);
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

QWidget* CustomerDetail::accountSection()
{
    using Model = CustomerDetailModel;
    auto* section = new QWidget;
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    QVBoxLayout* card = addSection(column, Model::accountSection(), section);

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
    connect(limit, &QLineEdit::returnPressed, m_save, &QPushButton::click);
    bindText(limit, m_model, &Model::creditLimitText, &Model::setCreditLimitText, &Model::fieldsChanged);
    connect(m_allowCredit, &QCheckBox::toggled, &m_model, &Model::setAllowCredit);
    connect(&m_model, &Model::fieldsChanged, m_allowCredit,
            [this] { m_allowCredit->setChecked(m_model.allowCredit()); });

    auto* figures = new QHBoxLayout;
    figures->setSpacing(40);
    m_balanceOwed = addFigure(figures, Model::balanceOwedTitle(), section);
    m_availableCredit =
        addFigure(figures, QStringLiteral("Available Credit"), section, &m_availableCreditCaption);
    figures->addStretch();
    m_receivePayment = new QPushButton(Model::receivePaymentTitle(), section);
    figures->addWidget(m_receivePayment, 0, Qt::AlignBottom);
    card->addSpacing(4);
    card->addLayout(figures);

    card->addWidget(Theme::label(Model::accountHistoryTitle(), Theme::Text::strong, section));
    m_accountHistory =
        makeTable({QStringLiteral("Date"), QStringLiteral("Details"), QStringLiteral("Charges"),
                   QStringLiteral("Payments"), QStringLiteral("Balance")},
                  Model::accountHistoryTitle(), section);
    m_noAccountHistory = Theme::label(QStringLiteral("No account activity yet."), Theme::Text::note, section);
    card->addWidget(m_accountHistory);
    card->addWidget(m_noAccountHistory);
    connect(m_receivePayment, &QPushButton::clicked, this, &CustomerDetail::openReceivePayment);
    return section;
}

QWidget* CustomerDetail::purchaseSection()
{
    using Model = CustomerDetailModel;
    auto* section = new QWidget;
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    QVBoxLayout* card = addSection(column, Model::purchaseSection(), section);
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

void CustomerDetail::focusName()
{
    field(Field::name)->setFocus();
    field(Field::name)->selectAll();
}

void CustomerDetail::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        refresh();
}

QString CustomerDetail::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

void CustomerDetail::refresh()
{
    m_isStale = false;
    // The saved name, not the one being typed.
    m_title->setText(customer()->name());
    refreshPoints();
    refreshAccount();
    refreshPurchases(m_purchasesShown);
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
        setRow(m_pointsHistory, row,
               {dateTimeText(entry.timestamp()), LoyaltyEntryKinds::description(entry), change,
                QString::number(entry.balanceAfter())});
    }
    fitHeight(m_pointsHistory);
    m_pointsHistory->setVisible(!entries.isEmpty());
    m_noPoints->setVisible(entries.isEmpty());
}

void CustomerDetail::refreshAccount()
{
    const double owed = m_model.balanceOwed();
    m_balanceOwed->setText(money(owed));
    // Nothing owed, nothing to take: the account can't be paid into credit.
    m_receivePayment->setEnabled(owed > 0);

    std::optional<double> available;
    try {
        available = m_accounts.availableCredit(customer());
    } catch (const StoreError&) {
        // The balance above has already said that the store can't be read.
    }
    const bool onCredit = customer()->allowCredit();
    m_availableCreditCaption->setVisible(onCredit);
    m_availableCredit->setVisible(onCredit);
    m_availableCredit->setText(available ? money(*available) : QStringLiteral("No limit"));

    const QList<AccountEntry> entries = m_model.accountHistory();
    m_accountHistory->setRowCount(static_cast<int>(entries.size()));
    for (int row = 0; row < entries.size(); ++row) {
        const AccountEntry& entry = entries[row];
        setRow(m_accountHistory, row,
               {dateTimeText(entry.date), entry.description(),
                entry.charge != 0 ? money(entry.charge) : QString(),
                entry.credit != 0 ? money(entry.credit) : QString(), money(entry.balance)});
    }
    fitHeight(m_accountHistory);
    // Oldest first: the latest line, with the balance now, is the one wanted.
    m_accountHistory->scrollToBottom();
    m_accountHistory->setVisible(!entries.isEmpty());
    m_noAccountHistory->setVisible(entries.isEmpty());
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
        setRow(m_purchases, row,
               {dateTimeText(sale.timestamp()), sale.invoiceNumber(), money(sale.total()),
                voided ? CustomerDetailModel::voidedMark() : QString()});
        if (voided) {
            for (int column = 0; column < m_purchases->columnCount(); ++column)
                m_purchases->item(row, column)->setForeground(voidedColour);
        }
    }
    fitHeight(m_purchases);
    m_purchases->setVisible(!sales.isEmpty());
    m_noPurchases->setVisible(sales.isEmpty());
    m_morePurchases->setVisible(more);
}

void CustomerDetail::openAdjustPoints()
{
    auto* sheet = new AdjustPointsSheet(m_loyalty, m_session, customer(), this);
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

void CustomerDetail::confirmDelete()
{
    auto* box = new QMessageBox(QMessageBox::Warning, CustomerDetailModel::deleteTitle(),
                                CustomerDetailModel::deleteTitle(), QMessageBox::NoButton, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(m_model.deleteWarnings().join(QStringLiteral("\n\n")));
    QPushButton* remove =
        box->addButton(CustomerDetailModel::deleteConfirmTitle(), QMessageBox::DestructiveRole);
    QPushButton* cancel = box->addButton(QMessageBox::Cancel);
    // A stray Return keeps the customer.
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    connect(box, &QMessageBox::buttonClicked, this, [this, remove](QAbstractButton* button) {
        if (button == remove && m_model.deleteCustomer())
            Q_EMIT customerDeleted();
    });
    box->open();
}
