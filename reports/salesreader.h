#pragma once

#include "reports/dayrange.h"
#include "reports/reportsale.h"
#include "store/modelcontext.h"

#include <QHash>
#include <QList>

// Reads what the reports need of the sales of a run of days through the typed row query: one
// query for the sales, one for their lines and one for their payments, each walking the sales'
// date index in step, so a year costs no records and no sort. Throws StoreError.
class SalesReader {
public:
    // What to read besides the sales themselves; a report of lines needs no payments.
    struct Parts {
        bool items = true;
        bool payments = true;
    };

    explicit SalesReader(ModelContext& context);

    // The sales rung up in `days`, oldest first, led by any voided in `days` though rung up
    // before: only ReportCalculator::voids() reads those.
    QList<ReportSale> sales(const DayRange& days, Parts parts);
    QList<ReportSale> sales(const DayRange& days) { return sales(days, Parts{}); }
    // Customers' payments on account received in `days`, oldest first.
    QList<ReportAccountPayment> accountPayments(const DayRange& days);

private:
    // One QString for each text that repeats down a column (statuses, methods, a product type, a
    // line's taxes), so a year of lines shares a handful instead of making one each.
    class SharedTexts {
    public:
        QString of(QByteArrayView utf8);

    private:
        QHash<QByteArray, QString> m_texts;
    };

    QList<ReportSale> read(const QString& where, const QVariantList& bindings, Parts parts);
    void readProductsAndCashiers();

    ModelContext& m_context;
    // By id as stored.
    QHash<QByteArray, std::shared_ptr<const ReportProduct>> m_products;
    QHash<QByteArray, std::shared_ptr<const ReportCashier>> m_cashiers;
    SharedTexts m_texts;
};
