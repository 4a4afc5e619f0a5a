#include "ui/customers/customersview.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "ui/controls/errorlabel.h"
#include "ui/customers/customerdetail.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QStackedWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
enum Column { nameColumn, owesColumn };
const QColor owesColour(0xa1, 0x4a, 0x00);

// A centred title with a note under it, where a list or a detail has nothing to show.
QWidget* makeEmptyState(const QString& title, const QString& note, QWidget* parent)
{
    auto* page = new QWidget(parent);
    auto* heading = Theme::label(title, Theme::Text::heading, page);
    heading->setAlignment(Qt::AlignCenter);
    auto* text = Theme::label(note, Theme::Text::subtitle, page);
    text->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(page);
    // A third of the way down, where the eye lands.
    layout->addStretch(1);
    layout->addWidget(heading);
    layout->addWidget(text);
    layout->addStretch(2);
    return page;
}
} // namespace

CustomersView::CustomersView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_context(environment.modelContext())
    , m_session(session)
    , m_accounts(environment.accountsService())
    , m_loyalty(m_context)
    , m_model(m_accounts, m_context, session)
{
    using Model = CustomersViewModel;
    m_newCustomer = new QPushButton(Model::newCustomerTitle(), this);
    Theme::markPrimary(m_newCustomer);
    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Customers"), Theme::Text::title, this));
    header->addStretch();
    header->addWidget(m_newCustomer);
    auto* error = new ErrorLabel(this);

    m_search = new QLineEdit(this);
    m_search->setPlaceholderText(Model::searchPrompt());
    m_search->setAccessibleName(Model::searchPrompt());
    m_search->setClearButtonEnabled(true);

    m_list = new QTableWidget(0, 2, this);
    m_list->setAccessibleName(QStringLiteral("Customers"));
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setShowGrid(false);
    m_list->setWordWrap(false);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->horizontalHeader()->hide();
    m_list->horizontalHeader()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    m_list->horizontalHeader()->setSectionResizeMode(owesColumn, QHeaderView::ResizeToContents);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->verticalHeader()->setDefaultSectionSize(38);
    m_noMatches = Theme::label(QString(), Theme::Text::note, this);
    m_noMatches->setTextFormat(Qt::PlainText);
    m_noMatches->hide();

    auto* listPane = new QWidget(this);
    listPane->setFixedWidth(300);
    auto* listColumn = new QVBoxLayout(listPane);
    listColumn->setContentsMargins(0, 0, 0, 0);
    listColumn->setSpacing(10);
    listColumn->addWidget(m_search);
    listColumn->addWidget(m_noMatches);
    listColumn->addWidget(m_list, 1);

    m_selectPrompt = makeEmptyState(Model::noSelectionTitle(), Model::noSelectionMessage(), this);
    m_detailPages = new QStackedWidget(this);
    m_detailPages->addWidget(m_selectPrompt);

    m_split = new QWidget(this);
    auto* split = new QHBoxLayout(m_split);
    split->setContentsMargins(0, 0, 0, 0);
    split->setSpacing(24);
    split->addWidget(listPane);
    split->addWidget(m_detailPages, 1);
    m_noCustomers = makeEmptyState(Model::emptyTitle(), Model::emptyMessage(), this);
    m_body = new QStackedWidget(this);
    m_body->addWidget(m_split);
    m_body->addWidget(m_noCustomers);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 24, 20);
    layout->setSpacing(16);
    layout->addLayout(header);
    layout->addWidget(error);
    layout->addWidget(m_body, 1);

    connect(m_newCustomer, &QPushButton::clicked, this, &CustomersView::addCustomer);
    connect(m_search, &QLineEdit::textChanged, &m_model, &Model::setSearchText);
    connect(&m_model, &Model::searchTextChanged, this, &CustomersView::refreshList);
    connect(&m_model, &Model::errorMessageChanged, error,
            [this, error] { error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::customersChanged, this, [this] {
        if (isVisible())
            refreshList();
        else
            m_isStale = true;
    });
    connect(&m_session, &SessionStore::settingsChanged, this, &CustomersView::refreshList);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_rebuilding || !current.isValid())
                    return;
                showDetail(m_customers[current.row()]);
            });
    refreshList();
}

void CustomersView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        refreshList();
}

bool CustomersView::isShowingNoCustomers() const
{
    return m_body->currentWidget() == m_noCustomers;
}

void CustomersView::refreshList()
{
    m_isStale = false;
    const QList<CustomerRow> rows = m_model.rows();
    const QUuid selectedID = m_detail ? m_detail->customer()->id() : QUuid();
    {
        m_rebuilding = true;
        m_customers.clear();
        m_list->clearContents();
        m_list->setRowCount(static_cast<int>(rows.size()));
        for (int row = 0; row < rows.size(); ++row) {
            const CustomerRow& line = rows[row];
            m_customers.append(line.customer);
            auto* name = new QTableWidgetItem(line.name);
            auto* owes = new QTableWidgetItem(line.owesText.value_or(QString()));
            owes->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            owes->setForeground(owesColour);
            m_list->setItem(row, nameColumn, name);
            m_list->setItem(row, owesColumn, owes);
            if (line.customer->id() == selectedID)
                m_list->selectRow(row);
        }
        m_rebuilding = false;
    }

    const bool searching = !m_model.searchText().isEmpty();
    m_noMatches->setText(QStringLiteral("No customers match “%1”.").arg(m_model.searchText()));
    m_noMatches->setVisible(searching && rows.isEmpty());
    // "No customers" only while there are none at all, not while a search finds none.
    m_body->setCurrentWidget(rows.isEmpty() && !searching && !m_model.errorMessage() ? m_noCustomers
                                                                                     : m_split);

    // A customer deleted elsewhere takes its detail with it; one only filtered out stays shown.
    if (m_detail && !m_context.find<Customer>(selectedID))
        showDetail(nullptr);
}

bool CustomersView::selectCustomer(const QUuid& customerID)
{
    for (int row = 0; row < m_customers.size(); ++row) {
        if (m_customers[row]->id() == customerID) {
            m_list->setCurrentCell(row, nameColumn);
            return true;
        }
    }
    return false;
}

void CustomersView::showDetail(const Ref<Customer>& customer)
{
    if (m_detail && customer && m_detail->customer() == customer)
        return;
    if (m_detail) {
        m_detailPages->removeWidget(m_detail);
        m_detail->deleteLater();
        m_detail = nullptr;
    }
    if (!customer) {
        m_list->clearSelection();
        m_detailPages->setCurrentWidget(m_selectPrompt);
        return;
    }
    m_detail = new CustomerDetail(m_accounts, m_loyalty, m_context, m_session, customer, this);
    connect(m_detail, &CustomerDetail::customerDeleted, this, [this] { showDetail(nullptr); });
    m_detailPages->addWidget(m_detail);
    m_detailPages->setCurrentWidget(m_detail);
}

void CustomersView::addCustomer()
{
    const Ref<Customer> customer = m_model.addCustomer();
    if (!customer)
        return;
    // A search that hides the new customer would leave the list looking unchanged. The save has
    // already brought the list up to date.
    m_search->clear();
    selectCustomer(customer->id());
    if (m_detail)
        m_detail->focusName();
}
