#pragma once

#include "data/Currency.h"
#include "data/DataTypes.h"
#include "data/Params.h"
#include "data/Table.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>

class TDataSet;

namespace Zel
{
struct Column;
struct VisibleRows;
} // namespace Zel

/// One column of an open dataset, read at the dataset's current row. The dataset owns the field, which is
/// valid until the dataset closes or its table is replaced. Look a field up once before a loop. Without a
/// current row every value is null.
class ZEL_DATA_EXPORT TField
{
public:
    const QString &FieldName() const noexcept; ///< The name in the table's definition.
    TFieldType DataType() const noexcept;      ///< The type of the column.
    bool IsNull() const;                       ///< Whether the current row has no value in this column.
    /// The value converted to the type. Null gives "", 0, 0.00, false or an invalid date. Throws
    /// EConvertError, which names the field and the value, when the value cannot be converted (a text that is
    /// not a number, an integer beyond 32 bits). AsInteger rounds real numbers and amounts, halves to even.
    /// The machine's locale does not matter.
    QString AsString() const;
    int AsInteger() const;
    double AsFloat() const;
    Currency AsCurrency() const;
    bool AsBoolean() const;
    QDate AsDate() const;
    QVariant AsVariant() const;

private:
    friend class TDataSet;
    explicit TField(const TDataSet *owner) noexcept : m_owner(owner) {}
    [[noreturn]] void RaiseReading(const QString &kind, const QVariant &value) const;
    const TDataSet *m_owner;
    const int *m_row = nullptr; ///< The dataset's current table row, -1 with none.
    const Zel::Column *m_column = nullptr;
    TFieldDef m_def;
    int m_index = 0;
};

/// A cursor over an immutable table: the visible rows, the current row and the filter. The five kinds of
/// dataset differ only in how opening fills the table. All operations except those on bookmarks see only the
/// rows that pass the filter.
///
/// When the visible rows change (a filter is set, changed, switched on or off), the current row stays current
/// if it is still visible; otherwise the first visible row becomes current. Destroying an open dataset does
/// not run the close handlers, because their owner may be partly destroyed.
class ZEL_DATA_EXPORT TDataSet : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString Filter READ Filter WRITE SetFilter)
    Q_PROPERTY(bool Filtered READ Filtered WRITE SetFiltered)
    Q_PROPERTY(bool Active READ Active WRITE SetActive)
public:
    ~TDataSet() override;

    // --- opening and closing: errors of the source pass to the caller and leave the dataset closed
    void Open();  ///< Runs BeforeOpen, fills the table, goes to the first row, runs AfterOpen; unless open.
    void Close(); ///< Runs BeforeClose, drops the rows, runs AfterClose; unless closed.
    bool Active() const noexcept; ///< Whether the dataset is open.
    void SetActive(bool active);  ///< Opens or closes the dataset.

    /// Handlers of the owner. An exception in a Before handler cancels the operation and reaches the caller.
    /// A BeforeOpen handler may open the dataset on its own rows.
    std::function<void(TDataSet *)> BeforeOpen;
    std::function<void(TDataSet *)> AfterOpen;
    std::function<void(TDataSet *)> BeforeClose;
    std::function<void(TDataSet *)> AfterClose;

    // --- the cursor: the operations throw EDatabaseError when the dataset is closed
    void First();     ///< Moves to the first visible row.
    void Next();      ///< Moves one row forward. On the last row sets Eof instead.
    void Prior();     ///< Moves one row back. On the first row sets Bof instead.
    void Last();      ///< Moves to the last visible row.
    bool Eof() const; ///< True after Last, after Next on the last row, without visible rows, and when closed.
    bool Bof() const; ///< True after Open and First, after Prior on the first row, without visible rows,
                      ///< and when closed.
    bool IsEmpty() const;     ///< Whether no row is visible.
    int RecordCount() const;  ///< The number of visible rows.
    int RecNo() const;        ///< The 1-based position among the visible rows; 0 without a current row.
    void SetRecNo(int recNo); ///< Moves to that position, limited to the visible rows.

    // --- fields; names are case-insensitive
    int FieldCount() const;                         ///< 0 when closed.
    TField *Fields(int index) const;                ///< Throws EListError outside 0..FieldCount-1.
    TField *FieldByName(const QString &name) const; ///< Throws EDatabaseError for an unknown name.
    TField *FindField(const QString &name) const;   ///< nullptr for an unknown name.
    QList<TFieldDef> FieldDefs() const;             ///< Names and types in column order.

    // --- bookmarks: the caller of GetBookmark must call FreeBookmark before the dataset closes
    TBookmark GetBookmark();               ///< nullptr without a current row.
    void GotoBookmark(TBookmark bookmark); ///< Throws EDatabaseError, without moving, if invalid or hidden.
    void FreeBookmark(TBookmark bookmark); ///< Ignores nullptr and bookmarks of other datasets and openings.
    bool BookmarkValid(TBookmark bookmark) const; ///< Whether it belongs to this dataset and this opening.
    int BookmarksHandedOut() const noexcept;      ///< The number of bookmarks not freed; 0 after a close.
    int BookmarksLost() const noexcept; ///< The number of bookmarks not freed before all closes so far.

    // --- filter: an SQL boolean expression over the field names, evaluated by SQLite
    // A name that is not a plain word is written in [..] or "..". Amounts are real numbers, Booleans 1 and 0
    // (or true and false), dates and moments ISO texts, as SQL's date functions need them. The
    // case-insensitive option applies to LIKE and to every comparison with a text field, for all alphabets.
    // Of two names that differ only in case, the expression uses the first field. Subqueries, parameters and
    // functions that depend on more than their arguments are errors.
    QString Filter() const; ///< The expression, whether applied or not; "" for none.
    void SetFilter(
        const QString &filter); ///< When Filtered, a malformed filter throws EDatabaseError without effect.
    bool Filtered() const noexcept; ///< Whether the filter is applied.
    void SetFiltered(bool filtered);
    TFilterOptions FilterOptions() const noexcept; ///< How the filter compares texts.
    void SetFilterOptions(TFilterOptions options); ///< Takes effect at once when Filtered.

    // --- look-ups among the visible rows; an integer equals a text with the same number
    /// Moves to the first row whose @p keyFields (names separated by ";") equal @p keyValues (a value, or a
    /// QVariantList for several fields). Returns false, and does not move, when there is no such row.
    bool Locate(const QString &keyFields, const QVariant &keyValues, TLocateOptions options = {});
    /// The value of @p resultFields in the first such row (a QVariantList for several fields); invalid when
    /// there is no such row. Does not move the cursor.
    QVariant Lookup(const QString &keyFields, const QVariant &keyValues, const QString &resultFields) const;

    // --- notification of views
    void DisableControls(); ///< Holds DataChange back. Calls are counted.
    void EnableControls(); ///< Ends one DisableControls; the last call emits a DataChange that was held back.
    bool ControlsDisabled() const noexcept; ///< Whether DataChange is held back.

    TParams &Params() noexcept;             ///< The parameters of the next opening.
    const TParams &Params() const noexcept; ///< The parameters of the next opening, read-only.

    /// The shared table of the cursor; nullptr when closed.
    TTablePtr Table() const;
    /// The row number in the table of the current row; -1 without a current row.
    int CurrentTableRow() const noexcept;

Q_SIGNALS:
    /// The rows or the position changed while controls are enabled.
    void DataChange();

protected:
    explicit TDataSet(QObject *parent);
    /// Supplies the rows; throws on failure. Open calls it after BeforeOpen.
    virtual TTablePtr FetchTable() = 0;
    /// Opens the dataset on @p table; closes it first when open. Moves to the table row @p row if that is
    /// visible, otherwise to the first row. Throws before any change when the filter does not fit the table.
    void InstallTable(TTablePtr table, int row = -1);
    /// Throws the error that InstallTable would throw because of the filter. While the returned rows exist,
    /// InstallTable reuses them.
    std::shared_ptr<const Zel::VisibleRows> CheckFilter(const TTable &table) const;
    /// Copies the filter and options of @p source without applying them. Call this only while closed.
    void TakeFilterOf(const TDataSet &source);
    /// Removes filter and options without applying the change. Call this only while closed.
    void DropFilter();
    QString DisplayName() const; ///< The name of the dataset in errors: its object name or its class.

    void connectNotify(const QMetaMethod &signal) override;

public:
    // --- reading the source again: declared after the other virtual operations, for binary compatibility
    /// Closes the dataset and opens it on the current data of its source. Prepares a query or procedure first
    /// if necessary, and executes a procedure; a procedure without rows leaves the dataset closed. Returns
    /// false, without effect, for a kind of dataset whose source cannot be read again. Errors of the source
    /// pass to the caller.
    virtual bool Reopen();
    /// Releases the dataset's resources at the source: closes and unprepares a query, unprepares a procedure
    /// without closing it, closes a client dataset. Other kinds do nothing.
    virtual void Release();

private:
    void RequireOpen() const;
    void RequireRows(const TTablePtr &table) const;
    void OpenOn(const std::function<TTablePtr()> &fetch, int row);
    void PutInPlace(TTablePtr table, int row);
    void ApplyFilter(const QString &filter, bool filtered, TFilterOptions options);
    std::shared_ptr<const Zel::VisibleRows> Evaluate(const TTable &table, const QString &filter,
                                                     TFilterOptions options) const;
    const std::vector<int> &ColumnsOf(const QString &names, bool results) const;
    int FindRow(const QString &keyFields, const QVariant &keyValues, TLocateOptions options) const;

    struct Private;
    std::unique_ptr<Private> d;
};
