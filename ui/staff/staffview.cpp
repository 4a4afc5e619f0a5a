#include "ui/staff/staffview.h"

#include "environment/appenvironment.h"
#include "ui/controls/asktosavechanges.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/listdetail.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/recordrowmodel.h"
#include "ui/staff/staffdetail.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

StaffView::StaffView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_staff(environment.staffService())
    , m_context(environment.modelContext())
    , m_session(session)
    , m_model(m_context)
    , m_rows(new RecordRowModel(
          StaffViewModel::pageSize,
          [this](const RecordListRow* after, int limit) { return m_model.page(after, limit); }, this))
{
    using Model = StaffViewModel;
    m_new = new QPushButton(Model::newMemberTitle(), this);
    Theme::markPrimary(m_new);
    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Staff"), Theme::Text::title, this));
    header->addStretch();
    header->addWidget(m_new);
    auto* error = new ErrorLabel(this);

    m_search = makeSearchField(Model::searchPrompt(), this);
    m_listCard =
        new RecordListCard(QStringLiteral("Staff"), Model::emptyTitle(), Model::emptyMessage(), this);
    m_listCard->setModel(m_rows);
    list()->setItemDelegate(new RecordRowDelegate(list()));
    auto* listColumn = new QVBoxLayout;
    listColumn->setSpacing(10);
    listColumn->addWidget(m_search);
    listColumn->addWidget(m_listCard, 1);
    auto* listPane = new QWidget(this);
    listPane->setLayout(listColumn);
    listColumn->setContentsMargins(0, 0, 0, 0);
    listPane->setFixedWidth(recordListWidth);
    m_detailPages = new DetailPages(Model::noSelectionTitle(), Model::noSelectionMessage(), this);
    auto* body = new QHBoxLayout;
    body->setSpacing(24);
    body->addWidget(listPane);
    body->addWidget(m_detailPages, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 24, 20);
    layout->setSpacing(16);
    layout->addLayout(header);
    layout->addWidget(error);
    layout->addLayout(body, 1);

    auto* lazyRefresh = new LazyRefresh(this, [this] { refreshList(); });
    connect(m_new, &QPushButton::clicked, this, &StaffView::addMember);
    connect(m_search, &QLineEdit::textChanged, &m_model, &Model::setSearchText);
    connect(&m_model, &Model::searchTextChanged, this, [this] { refreshList(true); });
    connect(&m_model, &Model::errorMessageChanged, error,
            [this, error] { error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::staffChanged, this, [this, lazyRefresh] {
        // Not while the list is in the middle of changing its current row: it is rebuilt after.
        if (m_listCard->isChoosing())
            QTimer::singleShot(0, lazyRefresh, &LazyRefresh::request);
        else
            lazyRefresh->request();
    });
    connect(m_listCard, &RecordListCard::rowChosen, this, [this](int row) {
        const QUuid chosen = m_rows->recordID(row);
        if (m_detail && chosen == m_detail->member()->id())
            return;
        // The list keeps pointing at the member being edited until the question is answered.
        showChosenRow();
        askToLeave([this, chosen] {
            if (const Ref<StaffMember> member = m_model.member(chosen))
                showDetail(member);
        });
    });
    refreshList();
}

QListView* StaffView::list() const
{
    return m_listCard->list();
}

void StaffView::refreshList(bool fromTop)
{
    if (fromTop)
        m_rows->restart();
    else
        m_rows->reload();
    // A member deleted elsewhere takes the detail with it; one only filtered out, or new and not yet
    // saved, stays shown.
    if (m_detail && m_detail->member()->isDeleted())
        showDetail(nullptr);
    else
        showChosenRow();
}

void StaffView::showChosenRow()
{
    // One the search hides, or a new one, has no row to look for: the search would read every page.
    const bool listed =
        m_detail && !m_detail->model().isNew() && !m_model.filteredStaff({m_detail->member()}).isEmpty();
    m_listCard->showChosenRow(listed ? m_rows->rowOf(m_detail->member()->id()) : -1);
}

void StaffView::showDetail(const Ref<StaffMember>& member)
{
    if (m_detail) {
        m_detailPages->removeWidget(m_detail);
        m_detail->deleteLater();
        m_detail = nullptr;
    }
    if (!member) {
        showChosenRow();
        m_detailPages->showDetail(nullptr);
        return;
    }
    m_detail = new StaffDetail(m_staff, m_context, m_session, member, this);
    showChosenRow();
    connect(m_detail, &StaffDetail::memberDeleted, this, [this] { showDetail(nullptr); });
    // A new member has no row until saved; once it has, the row is the chosen one.
    connect(&m_detail->model(), &StaffDetailModel::fieldsChanged, this, [this] {
        if (!m_detail || m_detail->model().isNew())
            return;
        const int row =
            m_rows->loaded([this](const RecordListRow& r) { return r.id == m_detail->member()->id(); });
        if (row < 0)
            refreshList();
        else
            m_listCard->showChosenRow(row);
    });
    m_detailPages->showDetail(m_detail);
}

void StaffView::addMember()
{
    askToLeave([this] {
        // A search would hide the member once saved, and the list would look unchanged.
        m_search->clear();
        showDetail(StaffViewModel::addStaffMember());
        m_detail->focusName();
    });
}

bool StaffView::hasUnsavedEdits() const
{
    return m_detail && m_detail->model().hasUnsavedEdits();
}

QString StaffView::editedName() const
{
    return nameOrTitle(m_detail->model().name(), StaffViewModel::newMemberTitle());
}

bool StaffView::saveEdits()
{
    return m_detail && m_detail->model().save();
}

void StaffView::discardEdits()
{
    // A new member has no saved values to go back to: it is dropped.
    if (m_detail->model().isNew())
        showDetail(nullptr);
    else
        m_detail->model().discardEdits();
}

QStringList StaffView::listedNames() const
{
    return m_rows->names();
}
