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

/// One column of an open dataset, read at the dataset's current row. Owned by the dataset and valid until it
/// closes or its table is replaced; resolve it once before a loop. With no current row every value is null.
class ZEL_DATA_EXPORT TField
{
public:
    const QString &FieldName() const noexcept;
    TFieldType DataType() const noexcept;
    bool IsNull() const;
    /// Null reads as "", 0, 0.00, false or an invalid date. A value that cannot be read as asked (a text in a
    /// number field's place, an integer beyond 32 bits) raises EConvertError naming the field and the text.
    QString AsString() const;
    int AsInteger() const;
    double AsFloat() const;
    Currency AsCurrency() const;
    bool AsBoolean() const;
    QDate AsDate() const;
    QVariant AsVariant() const;

private:
    friend class TDataSet;
    TField(const TDataSet *owner, int column) noexcept : m_owner(owner), m_column(column) {}
    const TDataSet *m_owner;
    int m_column;
};

/// A cursor over an immutable table: the visible rows, the current row and the filter. The five kinds differ
/// only in how opening fills the table. Rows outside the current filter are not seen by any operation but
/// bookmark keeping.
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
    void Close(); ///< Runs BeforeClose, drops the rows, AfterClose. No effect when closed.
    bool Active() const noexcept;
    void SetActive(bool active);

    /// Handlers of the owner; an exception in a Before handler stops the step and reaches the caller.
    std::function<void(TDataSet *)> BeforeOpen, AfterOpen, BeforeClose, AfterClose;

    // --- the cursor (EDatabaseError naming the dataset when it is closed)
    void First();
    void Next();
    void Prior();
    void Last();
    bool Eof() const; ///< After a Next past the last row, or with no visible rows; true when closed.
    bool Bof() const; ///< On opening, after First, after a Prior before the first row; true when closed.
    bool IsEmpty() const;
    int RecordCount() const;  ///< Visible rows.
    int RecNo() const;        ///< 1-based place among the visible rows; 0 with none.
    void SetRecNo(int recNo); ///< Moves there; clamped to the visible rows.

    // --- fields, found without regard to case
    int FieldCount() const;
    TField *Fields(int index) const;                ///< EListError outside 0..FieldCount-1.
    TField *FieldByName(const QString &name) const; ///< EDatabaseError naming field and dataset.
    TField *FindField(const QString &name) const;   ///< nullptr when there is none.
    QList<TFieldDef> FieldDefs() const;

    // --- bookmarks: each one handed out must come back through FreeBookmark before the dataset closes
    TBookmark GetBookmark();               ///< nullptr with no current row.
    void GotoBookmark(TBookmark bookmark); ///< EDatabaseError when not valid or not visible; nothing moves.
    void FreeBookmark(TBookmark bookmark); ///< Ignores nullptr and anything not handed out by this opening.
    bool BookmarkValid(TBookmark bookmark) const; ///< Of this dataset and this opening, and its row exists.
    int BookmarksHandedOut() const noexcept;      ///< Not yet given back; 0 after a close.
    int BookmarksLost() const noexcept;           ///< Still out when a close made them void, ever.

    // --- filter: an SQL boolean expression over the field names
    QString Filter() const;
    void SetFilter(
        const QString &filter); ///< When Filtered: a malformed one raises EDatabaseError and changes nothing.
    bool Filtered() const noexcept;
    void SetFiltered(bool filtered);
    TFilterOptions FilterOptions() const noexcept;
    void SetFilterOptions(TFilterOptions options);

    // --- look-ups among the visible rows, by value across integer and text
    /// Moves to the first row whose @p keyFields (names separated by ";") equal @p keyValues (a value, or a
    /// QVariantList for several); false and no move when there is none.
    bool Locate(const QString &keyFields, const QVariant &keyValues, TLocateOptions options = {});
    /// The value of @p resultFields in that row (a QVariantList for several), invalid when there is none. The
    /// cursor stays.
    QVariant Lookup(const QString &keyFields, const QVariant &keyValues, const QString &resultFields) const;

    // --- views following the dataset: counted
    void DisableControls();
    void EnableControls();
    bool ControlsDisabled() const noexcept;

    TParams &Params() noexcept;
    const TParams &Params() const noexcept;

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
    /// Puts @p table in place at once, as when whole data is assigned or executed into the dataset.
    void InstallTable(TTablePtr table);
    /// Takes over the filter and options of @p source, and its rows' visibility with them.
    void TakeFilterOf(const TDataSet &source);
    QString DisplayName() const; ///< How errors name this dataset: its object name or its class.

private:
    friend class TField;
    struct Private;
    std::unique_ptr<Private> d;
};
