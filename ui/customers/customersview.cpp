#include "ui/customers/customersview.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "ui/controls/asktosavechanges.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/listdetail.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/tables.h"
#include "ui/customers/customerdetail.h"
#include "ui/customers/customerlistmodel.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

CustomersView::CustomersView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_context(environment.modelContext())
    , m_session(session)
    , m_accounts(environment.accountsService())
    , m_model(m_accounts, m_context, session)
    , m_rows(new CustomerListModel(m_model, this))
{
    using Model = CustomersViewModel;
    m_newCustomer = new QPushButton(Model::newCustomerTitle(), this);
    Theme::markPrimary(m_newCustomer);
    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Customers"), Theme::Text::title, this));
    header->addStretch();
    header->addWidget(m_newCustomer);
    auto* error = new ErrorLabel(this);

    m_search = makeSearchField(Model::searchPrompt(), this);
    m_list = new QTableView(this);
    m_list->setModel(m_rows);
    auto* rows = new RecordRowDelegate(m_list);
    m_list->setItemDelegate(rows);
    setUpRecordTable(m_list, QStringLiteral("Customers"),
                     rows->sizeHint(QStyleOptionViewItem(), QModelIndex()).height());
    m_list->horizontalHeader()->hide();
    m_list->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setMouseTracking(true);
    // On a card, as every list beside a record's detail.
    auto* listCard = new QWidget(this);
    Theme::markCard(listCard);
    auto* cardLayout = new QVBoxLayout(listCard);
    cardLayout->setContentsMargins(1, 6, 1, 6);
    cardLayout->addWidget(m_list);
    m_listPane = new SearchListPane(m_search, listCard, QStringLiteral("No customers match “%1”."), this);
    m_listPane->setFixedWidth(recordListWidth);
    m_detailPages = new DetailPages(Model::noSelectionTitle(), Model::noSelectionMessage(), this);
    m_body = new ListDetailBody(m_listPane, m_detailPages, Model::emptyTitle(), Model::emptyMessage(), this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 24, 20);
    layout->setSpacing(16);
    layout->addLayout(header);
    layout->addWidget(error);
    layout->addWidget(m_body, 1);

    auto* lazyRefresh = new LazyRefresh(this, [this] { refreshList(); });
    connect(m_newCustomer, &QPushButton::clicked, this, &CustomersView::addCustomer);
    connect(m_search, &QLineEdit::textChanged, &m_model, &Model::setSearchText);
    connect(&m_model, &Model::searchTextChanged, this, &CustomersView::refreshList);
    connect(&m_model, &Model::errorMessageChanged, error,
            [this, error] { error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::customersChanged, lazyRefresh, &LazyRefresh::request);
    connect(&m_session, &SessionStore::settingsChanged, this, &CustomersView::refreshList);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_rebuilding || !current.isValid())
                    return;
                chooseCustomer(m_rows->customer(current.row()));
            });
    refreshList();
}

bool CustomersView::isShowingNoCustomers() const
{
    return m_body->isShowingNoRecords();
}

void CustomersView::refreshList()
{
    {
        m_rebuilding = true;
        m_rows->reload();
        // The customer shown keeps its row chosen; a new one has none until it is saved (and this
        // runs inside that save, before the detail knows it went through).
        if (m_detail && m_model.isSaved(m_detail->customer()->id())) {
            if (const int row = m_rows->rowOf(m_detail->customer()->id()); row >= 0)
                m_list->selectRow(row);
        }
        m_rebuilding = false;
    }
    const bool listed = m_rows->rowCount() > 0;

    const bool searching = !m_model.searchText().isEmpty();
    m_listPane->showMatches(m_model.searchText(), listed);
    // "No customers" only while there are none at all, not while a search finds none, nor while
    // the first is being typed.
    m_body->showNoRecords(!listed && !searching && !m_model.errorMessage() && !m_detail);

    // A customer deleted elsewhere takes its detail with it; one only filtered out, or new and not
    // yet saved, stays shown.
    if (m_detail && m_detail->customer()->isDeleted())
        showDetail(nullptr);
}

bool CustomersView::selectCustomer(const QUuid& customerID)
{
    const int row = m_rows->rowOf(customerID);
    if (row < 0)
        return false;
    m_list->setCurrentIndex(m_rows->index(row));
    return true;
}

void CustomersView::chooseCustomer(const Ref<Customer>& customer)
{
    if (m_detail && m_detail->customer() == customer)
        return;
    openAfterAsking([this] { selectCustomer(m_detail->customer()->id()); },
                    [this, customer] {
                        showDetail(customer);
                        selectCustomer(customer->id());
                    });
}

bool CustomersView::hasUnsavedEdits() const
{
    return m_detail && m_detail->model().hasUnsavedEdits();
}

QString CustomersView::editedName() const
{
    return nameOrTitle(m_detail->model().name(), CustomersViewModel::newCustomerTitle());
}

bool CustomersView::saveEdits()
{
    return m_detail && m_detail->save();
}

void CustomersView::discardEdits()
{
    // A new customer has no saved values to go back to: it is dropped.
    if (m_detail->model().isNew())
        showDetail(nullptr);
    else
        m_detail->model().discardEdits();
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
        m_detailPages->showDetail(nullptr);
        m_body->showNoRecords(m_model.searchText().isEmpty() && !m_model.hasCustomers() &&
                              !m_model.errorMessage());
        return;
    }
    m_detail = new CustomerDetail(m_environment, m_session, customer, this);
    connect(m_detail, &CustomerDetail::customerDeleted, this, [this] { showDetail(nullptr); });
    m_detailPages->showDetail(m_detail);
    m_body->showNoRecords(false);
}

void CustomersView::addCustomer()
{
    askToLeave([this] {
        // A search would hide the customer once saved, and the list would look unchanged.
        m_search->clear();
        showDetail(CustomersViewModel::addCustomer());
        // No row is the new customer's until it is saved; any row may be chosen to leave it.
        m_rebuilding = true;
        m_list->selectionModel()->clearCurrentIndex();
        m_list->clearSelection();
        m_rebuilding = false;
        m_detail->focusName();
    });
}
