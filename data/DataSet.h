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

/// One column of an open dataset, read at the dataset's current row. Owned by the dataset and valid until it
/// closes or its table is replaced; resolve it once before a loop. With no current row every value is null.
class ZEL_DATA_EXPORT TField
{
public:
    const QString &FieldName() const noexcept; ///< As the table defines it.
    TFieldType DataType() const noexcept;      ///< The type of the column.
    bool IsNull() const;                       ///< Whether the current row has no value here.
    /// Null reads as "", 0, 0.00, false or an invalid date. A value that cannot be read as asked (a text in a
    /// number field's place, an integer beyond 32 bits) raises EConvertError naming the field and the text.
    /// Real numbers and amounts read as integers are rounded, halves to even. No locale changes a text.
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

/// A cursor over an immutable table: the visible rows, the current row and the filter. The five kinds differ
/// only in how opening fills the table. Rows outside the current filter are not seen by any operation but
/// bookmark keeping.
///
/// Whenever the visible rows change (a filter is set, changed, switched on or off), the current row stays if
/// it is still visible, else the dataset stands on the first visible row. Destroying an open dataset drops
/// its rows without running the close handlers, since their owner may be half destroyed itself.
class ZEL_DATA_EXPORT TDataSet : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString Filter READ Filter WRITE SetFilter)
    Q_PROPERTY(bool Filtered READ Filtered WRITE SetFiltered)
    Q_PROPERTY(bool Active READ Active WRITE SetActive)
public:
    ~TDataSet() override;

    // --- life: errors of the source pass to the caller and leave the dataset closed
    void
    Open(); ///< Runs BeforeOpen, fills the table, stands on the first row, AfterOpen. No effect when open.
    void Close();                 ///< Runs BeforeClose, drops the rows, AfterClose. No effect when closed.
    bool Active() const noexcept; ///< Whether it is open.
    void SetActive(bool active);  ///< Open or Close.

    /// Handlers of the owner; an exception in a Before handler stops the step and reaches the caller. A
    /// BeforeOpen handler may put rows in place itself, which then are the open ones.
    std::function<void(TDataSet *)> BeforeOpen;
    std::function<void(TDataSet *)> AfterOpen;
    std::function<void(TDataSet *)> BeforeClose;
    std::function<void(TDataSet *)> AfterClose;

    // --- the cursor (EDatabaseError naming the dataset when it is closed)
    void First(); ///< To the first visible row.
    void Next();  ///< One row on; past the last one Eof.
    void Prior(); ///< One row back; before the first one Bof.
    void Last();  ///< To the last visible row.
    bool
    Eof() const; ///< After Last, after a Next past the last row, or with no visible rows; true when closed.
    bool Bof() const;     ///< On opening, after First, after a Prior before the first row, or with no visible
                          ///< rows; true when closed.
    bool IsEmpty() const; ///< No row is visible.
    int RecordCount() const;  ///< Visible rows.
    int RecNo() const;        ///< 1-based place among the visible rows; 0 with none.
    void SetRecNo(int recNo); ///< Moves there; clamped to the visible rows.

    // --- fields, found without regard to case
    int FieldCount() const;                         ///< 0 when closed.
    TField *Fields(int index) const;                ///< EListError outside 0..FieldCount-1.
    TField *FieldByName(const QString &name) const; ///< EDatabaseError naming field and dataset.
    TField *FindField(const QString &name) const;   ///< nullptr when there is none.
    QList<TFieldDef> FieldDefs() const;             ///< Names and types in column order.

    // --- bookmarks: each one handed out must come back through FreeBookmark before the dataset closes
    TBookmark GetBookmark();               ///< nullptr with no current row.
    void GotoBookmark(TBookmark bookmark); ///< EDatabaseError when not valid or not visible; nothing moves.
    void FreeBookmark(TBookmark bookmark); ///< Ignores nullptr and anything not handed out by this opening.
    bool BookmarkValid(TBookmark bookmark) const; ///< Of this dataset and this opening, and its row exists.
    int BookmarksHandedOut() const noexcept;      ///< Not yet given back; 0 after a close.
    int BookmarksLost() const noexcept;           ///< Still out when a close made them void, ever.

    // --- filter: an SQL boolean expression over the field names, evaluated by SQLite
    // A name that is no plain word stands in [..] or "..". Amounts are real numbers, Booleans 1 and 0 (or
    // true and false), dates and moments texts in the ISO form, so that SQL's date functions take them. The
    // case-insensitive option holds for LIKE and for every comparison with a text field, over all letters. Of
    // two names that differ in case only, the expression means the first field. There are no queries inside,
    // no parameters, and only functions that look at nothing but their arguments.
    QString Filter() const; ///< The expression, applied or not; "" for none.
    void SetFilter(
        const QString &filter); ///< When Filtered: a malformed one raises EDatabaseError and changes nothing.
    bool Filtered() const noexcept; ///< Whether the filter is applied.
    void SetFiltered(bool filtered);
    TFilterOptions FilterOptions() const noexcept; ///< How the filter compares texts.
    void SetFilterOptions(TFilterOptions options); ///< Takes effect at once when Filtered.

    // --- look-ups among the visible rows, by value across integer and text
    /// Moves to the first row whose @p keyFields (names separated by ";") equal @p keyValues (a value, or a
    /// QVariantList for several); false and no move when there is none.
    bool Locate(const QString &keyFields, const QVariant &keyValues, TLocateOptions options = {});
    /// The value of @p resultFields in that row (a QVariantList for several), invalid when there is none. The
    /// cursor stays.
    QVariant Lookup(const QString &keyFields, const QVariant &keyValues, const QString &resultFields) const;

    // --- views following the dataset: counted
    void DisableControls(); ///< DataChange is held back from here on.
    void EnableControls();  ///< Ends one DisableControls; the last one sends what was held back.
    bool ControlsDisabled() const noexcept; ///< Whether DataChange is held back.

    TParams &Params() noexcept;             ///< The parameters the next opening uses.
    const TParams &Params() const noexcept; ///< The same, to look at.

    /// The shared table behind the cursor, nullptr when closed.
    TTablePtr Table() const;
    /// The table row of the current row, -1 with none.
    int CurrentTableRow() const noexcept;

Q_SIGNALS:
    /// The rows or the position changed while controls are enabled.
    void DataChange();

protected:
    explicit TDataSet(QObject *parent);
    /// Supplies the rows; raises on failure. Called by Open after BeforeOpen.
    virtual TTablePtr FetchTable() = 0;
    /// Opens on @p table at once, as when whole data is assigned or executed into the dataset; closes first
    /// when open. Stands on the table row @p row when it is visible, else on the first row. A table that the
    /// filter does not fit is refused before anything changes.
    void InstallTable(TTablePtr table, int row = -1);
    /// Raises what InstallTable would raise because of the filter. What it worked out is kept for
    /// InstallTable as long as the result lives.
    std::shared_ptr<const Zel::VisibleRows> CheckFilter(const TTable &table) const;
    /// Takes over the filter and options of @p source without applying them; only while closed.
    void TakeFilterOf(const TDataSet &source);
    /// The same with no filter at all.
    void DropFilter();
    QString DisplayName() const; ///< How errors name this dataset: its object name or its class.

    void connectNotify(const QMetaMethod &signal) override;

public:
    // --- asking the source again: behind the other virtual operations, so that hosts built before still fit
    /// Closes, and opens on what the source has now: a query or procedure is prepared first when it is not,
    /// and a procedure is run, which may leave it closed. False, and nothing is done, for a kind of dataset
    /// whose source cannot be asked again. Errors of the source pass to the caller.
    virtual bool Reopen();
    /// Gives back what the source holds for the dataset: a query closes and unprepares, a procedure only
    /// unprepares, a client dataset closes. Other kinds do nothing.
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
