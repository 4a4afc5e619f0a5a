#pragma once

#include "reports/auditlogviewmodel.h"

#include <QWidget>

class AppEnvironment;
class AuditLogTableModel;
class MarketRegistry;
class QLabel;
class QTableView;
class SessionStore;

// "Audit Log": every sensitive action with who did it and who approved it, filtered by action,
// days and text, and exported as CSV or PDF. Admins only.
class AuditLogView : public QWidget {
    Q_OBJECT

public:
    AuditLogView(AppEnvironment& environment, SessionStore& session, MarketRegistry& registry,
                 QWidget* parent = nullptr);

    AuditLogViewModel& model() { return m_model; }
    QTableView* table() const { return m_table; }

private:
    QWidget* filterBar();
    void refresh();
    void exportAs(const QString& suffix, const QString& filter);

    SessionStore& m_session;
    MarketRegistry& m_registry;
    AuditLogViewModel m_model;
    AuditLogTableModel* m_rows;
    QLabel* m_count;
    QTableView* m_table;
};
