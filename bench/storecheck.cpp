// tallyrun_store_check <path>: opens a generated store the way the program does and checks that its
// history adds up, so a generator fault can't hide behind plausible-looking benchmark figures.

#include "records/posschema.h"
#include "records/records.h"
#include "store/storeerror.h"

#include <cstdio>
#include <exception>

namespace {
int failures = 0;

void expect(bool ok, const char* what)
{
    if (!ok) {
        std::fprintf(stderr, "FAILED: %s\n", what);
        ++failures;
    }
}

qint64 number(ModelContext& context, const char* sql)
{
    return context.scalar(QString::fromUtf8(sql)).toLongLong();
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: tallyrun_store_check <path>\n");
        return 2;
    }
    try {
        ModelContainer container(QString::fromLocal8Bit(argv[1]), POSSchema::description());
        ModelContext& context = container.mainContext();

        expect(context.count<User>() == 3, "three users");
        expect(context.count<Tax>() == 3 && number(context, "SELECT COUNT(*) FROM TaxGroup_taxes") == 3,
               "three taxes in the one group");
        for (const Entity* entity :
             {&Category::schema(), &Product::schema(), &Customer::schema(), &TillShift::schema(),
              &Sale::schema(), &SaleItem::schema(), &Payment::schema(), &InventoryMovement::schema(),
              &LoyaltyEntry::schema()}) {
            if (context.count(*entity) == 0) {
                std::fprintf(stderr, "FAILED: %s has rows\n", qPrintable(entity->name));
                ++failures;
            }
        }

        // What the first window loads.
        const Ref<AppSettings> settings = context.fetchFirst<AppSettings>();
        expect(settings != nullptr, "a settings record");
        expect(context.count<AppSettings>() == 1, "exactly one settings record");
        expect(context.count<TillShift>(TillShift::Col::statusRaw == QStringLiteral("open")) == 1,
               "one open shift");
        const Ref<TillShift> open = context.fetchFirst<TillShift>(
            FetchDescriptor(TillShift::Col::statusRaw == QStringLiteral("open")));
        expect(open && !open->closedAt() && !open->expectedCash(), "the open shift is not closed");
        expect(number(context,
                      "SELECT COUNT(*) FROM TillShift WHERE statusRaw = 'closed' AND (closedAt IS NULL OR "
                      "variance IS NULL OR abs(countedCash - expectedCash - variance) > 0.005)") == 0,
               "closed shifts carry their count");

        if (settings)
            expect(settings->lastReceiptSequence() == context.count<Sale>(),
                   "receipt sequence = number of sales");
        expect(number(context,
                      "SELECT COUNT(*) FROM (SELECT invoiceNumber FROM Sale GROUP BY invoiceNumber HAVING "
                      "COUNT(*) > 1)") == 0,
               "invoice numbers are unique");
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale WHERE id != upper(id) OR length(id) != 36 OR cashier IS "
                      "NULL OR tillShift IS NULL") == 0,
               "sales have upper-case ids, a cashier and a shift");
        expect(number(context, "SELECT COUNT(*) FROM Sale WHERE statusRaw NOT IN ('completed', "
                               "'partiallyRefunded', 'refunded', 'voided')") == 0,
               "sales are completed, refunded in part or whole, or voided");
        expect(context.count<Sale>(Sale::Col::refundOfSaleID.isNotNull()) > 0 &&
                   context.count<Sale>(Sale::Col::statusRaw == QStringLiteral("voided")) > 0,
               "some sales were refunded and some voided");
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale r LEFT JOIN Sale o ON o.id = r.refundOfSaleID WHERE "
                      "r.refundOfSaleID IS NOT NULL AND (o.id IS NULL OR o.refundOfSaleID IS NOT NULL OR "
                      "o.statusRaw NOT IN ('partiallyRefunded', 'refunded') OR r.statusRaw != 'refunded' OR "
                      "r.total >= 0 OR r.timestamp <= o.timestamp)") == 0,
               "a refund is a negative sale after the one it refunds");
        expect(
            number(context,
                   "SELECT COUNT(*) FROM Sale o WHERE o.statusRaw IN ('partiallyRefunded', 'refunded') AND "
                   "abs((SELECT SUM(returnedQuantity) FROM SaleItem WHERE sale = o.id) + (SELECT "
                   "COALESCE(SUM(i.quantity), 0) FROM Sale r JOIN SaleItem i ON i.sale = r.id WHERE "
                   "r.refundOfSaleID = o.id)) > 0.0005") == 0,
            "returned quantities are what the refunds took back");
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale o WHERE o.refundOfSaleID IS NULL AND (o.statusRaw = "
                      "'refunded') != "
                      "NOT EXISTS (SELECT 1 FROM SaleItem i WHERE i.sale = o.id AND i.returnedQuantity < "
                      "i.quantity)") == 0,
               "a sale is refunded when every line came back");

        expect(
            number(context,
                   "SELECT COUNT(*) FROM Sale s WHERE (SELECT COUNT(*) FROM SaleItem i WHERE i.sale = s.id) "
                   "NOT BETWEEN 1 AND 6") == 0,
            "every sale has one to six lines");
        expect(number(context, "SELECT COUNT(*) FROM Sale WHERE abs(total - (subtotal - lineDiscountTotal - "
                               "saleDiscount - pointsDiscount + taxTotal)) > 0.02") == 0,
               "sale totals add up");
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale s WHERE abs(s.taxTotal - (SELECT SUM((i.quantity * "
                      "i.unitPrice - i.lineDiscount) * i.taxRateSnapshot) FROM SaleItem i WHERE i.sale = "
                      "s.id)) > 0.02") == 0,
               "tax is the lines' net times their rate");
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale s WHERE abs(s.total - (SELECT SUM(amount) FROM Payment p "
                      "WHERE p.sale = s.id)) > 0.005") == 0,
               "payments settle each sale");
        expect(number(context,
                      "SELECT COUNT(*) FROM Payment WHERE amount >= 0 AND (tenderedAmount < amount OR "
                      "abs(changeGiven - (tenderedAmount - amount)) > 0.005)") == 0,
               "change is tendered less amount");
        expect(number(context,
                      "SELECT COUNT(*) FROM Payment p JOIN Sale s ON s.id = p.sale WHERE (p.amount < 0) != "
                      "(s.refundOfSaleID IS NOT NULL) OR (p.amount < 0 AND (p.tenderedAmount != 0 OR "
                      "p.changeGiven != 0))") == 0,
               "only refunds pay out, with nothing tendered");

        expect(number(context,
                      "SELECT COUNT(*) FROM Product p WHERE productTypeRaw = 'inventory' AND (stockQuantity "
                      "< 0 OR abs(stockQuantity - (SELECT COALESCE(SUM(quantityChange), 0) FROM "
                      "InventoryMovement m WHERE m.product = p.id)) > 0.0005)") == 0,
               "stock equals the sum of its movements and is never negative");
        expect(number(context, "SELECT COUNT(*) FROM InventoryMovement WHERE stockAfter < 0") == 0,
               "stock never went below zero");
        expect(number(context, "SELECT COUNT(*) FROM SaleItem i JOIN Product p ON p.id = i.product WHERE "
                               "p.productTypeRaw = 'inventory' AND i.quantity > 0") ==
                   number(context, "SELECT COUNT(*) FROM InventoryMovement WHERE typeRaw = 'saleDeduction'"),
               "one sale deduction per stock-tracked line");
        expect(number(context, "SELECT COUNT(*) FROM SaleItem i JOIN Product p ON p.id = i.product WHERE "
                               "p.productTypeRaw = 'inventory' AND i.quantity < 0") ==
                   number(context, "SELECT COUNT(*) FROM InventoryMovement WHERE typeRaw = 'returnRestock'"),
               "one return restock per stock-tracked refund line");
        expect(
            number(context,
                   "SELECT COUNT(*) FROM Product WHERE (taxGroup IS NULL) != (taxRate = 0) OR isTaxable != "
                   "(taxRate > 0) OR length(barcode) != 13") == 0,
            "taxed products are in the group; barcodes have 13 digits");
        expect(number(context,
                      "SELECT COUNT(*) FROM Customer c WHERE loyaltyPoints != COALESCE((SELECT SUM(points) "
                      "FROM LoyaltyEntry e WHERE e.customer = c.id), 0)") == 0,
               "loyalty balances match their ledgers");

        // Invoice numbers carry the sale's day and the store-wide running number, in order.
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale WHERE substr(invoiceNumber, 1, 13) != 'INV-' || "
                      "strftime('%Y%m%d', timestamp, 'unixepoch') || '-' OR CAST(substr(invoiceNumber, 14) "
                      "AS INTEGER) != rowid") == 0,
               "invoice numbers are INV-day-running number");
        expect(number(context,
                      "SELECT COUNT(*) FROM Sale s JOIN TillShift t ON t.id = s.tillShift WHERE s.timestamp "
                      "< t.openedAt OR s.timestamp > COALESCE(t.closedAt, s.timestamp) OR s.cashier != "
                      "t.cashier") == 0,
               "sales fall inside their shift and are rung up by its cashier");
        // "+methodRaw": without statistics SQLite would walk every cash payment of five years per
        // shift through Payment(methodRaw, timestamp) instead of the shift's few through Payment(sale).
        expect(number(context,
                      "SELECT COUNT(*) FROM TillShift t WHERE statusRaw = 'closed' AND abs(expectedCash - "
                      "(openingFloat + COALESCE((SELECT SUM(p.amount) FROM Payment p JOIN Sale s ON s.id = "
                      "p.sale WHERE s.tillShift = t.id AND s.statusRaw != 'voided' AND +p.methodRaw = "
                      "'cash'), 0) + COALESCE((SELECT SUM(amount) FROM CustomerPayment c WHERE c.tillShift "
                      "= t.id AND c.methodRaw = 'cash'), 0) + COALESCE((SELECT SUM(CASE typeRaw WHEN "
                      "'payIn' THEN amount ELSE -amount END) FROM CashMovement m WHERE m.tillShift = t.id), "
                      "0))) > 0.005") == 0,
               "expected cash is the float plus the shift's cash in and out");
        expect(number(context,
                      "SELECT COUNT(*) FROM Payment p JOIN Sale s ON s.id = p.sale LEFT JOIN Customer c ON "
                      "c.id = s.customer WHERE p.methodRaw = 'onAccount' AND c.allowCredit IS NOT 1") == 0,
               "only credit customers buy on account");
        expect(number(context,
                      "SELECT COUNT(*) FROM SaleItem i JOIN Product p ON p.id = i.product WHERE "
                      "i.productNameSnapshot != p.name OR i.skuSnapshot != p.sku OR i.productTypeRaw != "
                      "p.productTypeRaw OR i.sellingUnitRaw != p.sellingUnitRaw OR i.taxRateSnapshot != "
                      "p.taxRate OR (p.taxRate > 0) != (i.taxComponentsRaw != '')") == 0,
               "lines snapshot their product");
        // Each movement starts from where the product's previous one left the stock.
        expect(number(context,
                      "SELECT COUNT(*) FROM (SELECT quantityChange, stockAfter, LAG(stockAfter, 1, 0) OVER "
                      "(PARTITION BY product ORDER BY rowid) AS before FROM InventoryMovement) WHERE "
                      "abs(before + quantityChange - stockAfter) > 0.0005") == 0,
               "movements chain from one stock level to the next");

        // The relationships resolve through the record layer, not only in SQL.
        const Ref<Sale> sale = context.fetchFirst<Sale>();
        expect(sale && !sale->items().isEmpty() && !sale->payments().isEmpty(),
               "a sale's lines and payments load");
        expect(sale && sale->cashier() && sale->tillShift(), "a sale's cashier and shift load");
        if (sale && !sale->items().isEmpty())
            expect(sale->items().first()->product() != nullptr, "a line's product loads");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "FAILED: %s\n", error.what());
        return 1;
    }
    if (failures == 0)
        std::printf("store is consistent\n");
    return failures == 0 ? 0 : 1;
}
