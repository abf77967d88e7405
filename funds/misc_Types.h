#pragma once

#include "data/Currency.h"
#include "data/DataTypes.h"
#include "data/Persistent.h"
#include "export/zel_commonframes_export.h"

#include <QList>

#include <array>
#include <memory>
#include <vector>

/// One fund of an allocation. The record owns nothing.
struct TFundRec {
    int FundID = 0; ///< The fund's number in the catalogue.
    /// The fund's row in the allocation frame's fund dataset; nullptr for none. The owner of the list frees
    /// the bookmark before it drops the record.
    TBookmark Bookmark = nullptr;
    Currency Amount;  ///< rand
    Currency Percent; ///< percent of the investment; 100.00 is the whole
    friend bool operator==(const TFundRec &, const TFundRec &) = default;
};

/// The funds of an allocation in the order of the grid's rows: element i is grid row i + 1.
///
/// A list with reference semantics: copies share the storage, so a change of a record through one copy is
/// visible in all. SetLength, Append and the assignment of a new list give a copy its own storage. The list
/// can be empty but is never null.
class ZEL_COMMONFRAMES_EXPORT TFunds
{
public:
    TFunds();
    TFunds(std::initializer_list<TFundRec> records); ///< A list with its own storage and these records.
    explicit TFunds(std::vector<TFundRec> records);  ///< A list with its own storage and these records.

    /// The number of records.
    int Length() const noexcept { return static_cast<int>(m_records->size()); }
    bool IsEmpty() const noexcept { return m_records->empty(); } ///< Whether there is no record.
    /// The record at @p index in the shared storage. Throws EListError outside 0..Length-1.
    TFundRec &operator[](int index) const;
    /// Gives this list its own storage with @p length records: a copy of the first ones, and new ones of 0.
    void SetLength(int length);
    /// Appends a record. A list that shares its storage first gets its own.
    void Append(const TFundRec &record);
    /// A list with its own storage and the same records.
    TFunds Copy() const;
    bool SharesStorageWith(const TFunds &other) const noexcept { return m_records == other.m_records; }

    /// For range loops; invalid after a change of length.
    std::vector<TFundRec>::iterator begin() const noexcept { return m_records->begin(); }
    std::vector<TFundRec>::iterator end() const noexcept { return m_records->end(); }

private:
    std::shared_ptr<std::vector<TFundRec>> m_records;
};

// TDynamicArrayOfInt, the list of fund identifiers, is declared in data/DataTypes.h, because the tree views
// need it.

/// A disinvestment of the host's product screens; this package does not use it.
using TRecDisinvestmentFund = std::array<quint32, 4>;
using TRecDisinvestmentFundArray = QList<TRecDisinvestmentFund>;

/// Which previous-investment questions were already asked, so that a quote asks each question only once.
class ZEL_COMMONFRAMES_EXPORT TShowedMessageStatus : public TPersistent
{
    Q_OBJECT
    Q_PROPERTY(bool AlreadyShowedWorldOGSQuestionMsg MEMBER AlreadyShowedWorldOGSQuestionMsg)
    Q_PROPERTY(bool AlreadyShowedOGSQuestionMsg MEMBER AlreadyShowedOGSQuestionMsg)
    Q_PROPERTY(bool AlreadyShowedBulWorldQuestionMsg MEMBER AlreadyShowedBulWorldQuestionMsg)
    Q_PROPERTY(bool AlreadyShowedWorldOGS_INTQuestionMsg MEMBER AlreadyShowedWorldOGS_INTQuestionMsg)
public:
    explicit TShowedMessageStatus(QObject *parent = nullptr);
    ~TShowedMessageStatus() override;
    /// Copies the four flags of another TShowedMessageStatus. Throws EConvertError for any other source.
    void Assign(const QObject *source) override;

    bool AlreadyShowedWorldOGSQuestionMsg = false;     ///< resFund_WorldOGSPrevInv_Msg was asked
    bool AlreadyShowedOGSQuestionMsg = false;          ///< resFund_OGSPrevInv_Msg was asked
    bool AlreadyShowedBulWorldQuestionMsg = false;     ///< resFund_BulwarkWorldPrevInv_Msg was asked
    bool AlreadyShowedWorldOGS_INTQuestionMsg = false; ///< resFund_OGS_INTPrevInv_Msg was asked
};

/// The message texts of the quote screens, by their numbers in the string table.
enum class TMessageText {
    resInvalidInvestmentDate = 65520,
    resInitialInvCaptionForAdditional = 65521,
    resInitialInvAmtCaptionForAdditional = 65522,
    resFund_WorldOGSPrevInv_Msg = 65523,
    resFund_OGSPrevInv_Msg = 65524,
    resFund_BulwarkWorldPrevInv_Msg = 65525,
    resFund_OGS_INTPrevInv_Msg = 65526,
    resBondInCurrentWeek_Msg = 65527,
    resGTDAnnuityInCurrentWeek_Msg = 65528,
    resInvalidBondCode = 65529,
    resInvalidAnnuityCode = 65530,
    resRetIncSwitchInfoMsg = 65531,
    resNoRetirementFundNameMsg = 65532,
    resBondCodeWarning = 65533,
    resBondOnlyWarning = 65534,
    resFixedBondAvailabilityNote = 65535
};

/// The text of @p message in the language of the currently installed translations (context "misc_Types").
/// Load the text when it is shown, not earlier.
ZEL_COMMONFRAMES_EXPORT QString LoadResString(TMessageText message);
/// The same by number. Throws EListError for a number that is not in the table.
ZEL_COMMONFRAMES_EXPORT QString LoadResString(int number);
