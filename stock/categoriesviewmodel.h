#pragma once

#include "records/category.h"
#include "store/modelcontext.h"
#include "viewmodel/recordlistrow.h"
#include "viewmodel/viewmodel.h"

#include <QString>
#include <QUuid>

#include <optional>

// The categories of the Products screen: each with how many products it holds, renamed or deleted.
// A deleted category's products stay, with no category. Each change is one unit of work.
class CategoriesViewModel : public ViewModel {
    Q_OBJECT

public:
    static constexpr int pageSize = 100;

    static QString title() { return QStringLiteral("Categories"); }
    static QString buttonTitle() { return QStringLiteral("Categories…"); }
    static QString emptyTitle() { return QStringLiteral("No categories"); }
    static QString emptyMessage()
    {
        return QStringLiteral("Make one from a product's form, beside Category.");
    }
    static QString nameTitle() { return QStringLiteral("Category name"); }
    static QString renameTitle() { return QStringLiteral("Rename"); }
    static QString deleteTitle() { return QStringLiteral("Delete Category"); }
    static QString nameRequiredMessage() { return QStringLiteral("Enter a category name."); }
    static QString duplicateNameMessage(const QString& name)
    {
        return QStringLiteral("There's already a category called “%1”.").arg(name);
    }
    static QString goneMessage() { return QStringLiteral("That category has been deleted."); }
    static QString productCountText(qint64 count);
    static QString deleteQuestion(const QString& name) { return QStringLiteral("Delete “%1”?").arg(name); }
    // Says how many products lose the category.
    static QString deleteConsequences(qint64 productCount);

    explicit CategoriesViewModel(ModelContext& context, QObject* parent = nullptr);

    // The list by name, a page at a time: the `limit` categories after `after`, the last row shown,
    // or from the first without it; fewer than `limit` means the end. The detail is the product count.
    QList<RecordListRow> page(const RecordListRow* after = nullptr, int limit = pageSize);
    qint64 productCount(const QUuid& categoryID);

    // The name trimmed; refused when empty or when another category has it, whatever the case.
    // Absent when renamed, else why not, with nothing written.
    std::optional<QString> rename(const QUuid& categoryID, const QString& name);
    // Absent when deleted, else why not, with nothing written.
    std::optional<QString> remove(const QUuid& categoryID);

Q_SIGNALS:
    // A save or rollback touched categories or products: the rows are out of date.
    void categoriesChanged();

private:
    Ref<Category> find(const QUuid& categoryID);

    ModelContext& m_context;
};
