#pragma once

#include "data/Currency.h"
#include "data/DataTypes.h"
#include "data/Persistent.h"
#include "export/zel_commonframes_export.h"

#include <QList>

#include <array>
#include <memory>
#include <vector>

/// One fund of an allocation. Holds no owned data: records are copied field by field.
struct TFundRec {
    int FundID = 0; ///< The fund's number in the catalogue.
    /// The fund's row in the allocation frame's fund dataset, nullptr for none. Belongs to that dataset: the
    /// list's owner gives it back before the record is dropped.
    TBookmark Bookmark = nullptr;
    Currency Amount;  ///< rand
    Currency Percent; ///< percent of the investment; 100.00 is the whole
    friend bool operator==(const TFundRec &, const TFundRec &) = default;
};

/// The funds of an allocation in the order of the grid's rows: element i is grid row i + 1.
///
/// A list with reference semantics: copying it shares its storage, and a change of a record through one copy
/// is seen through all. SetLength, Append and the assignment of a new list part a copy from the others. The
/// list is empty, never null.
class ZEL_COMMONFRAMES_EXPORT TFunds
{
public:
    TFunds();
    TFunds(std::initializer_list<TFundRec> records); ///< A list of its own with these records.
    explicit TFunds(std::vector<TFundRec> records);  ///< The same from a vector.

    /// How many records there are.
    int Length() const noexcept { return static_cast<int>(m_records->size()); }
    bool IsEmpty() const noexcept { return m_records->empty(); } ///< Whether there is no record.
    /// The record at @p index in the shared storage; EListError outside 0..Length-1.
    TFundRec &operator[](int index) const;
    /// Gives this list a storage of its own with @p length records, the first ones copied, new ones zero.
    void SetLength(int length);
    /// Appends as SetLength does: into a storage of this list's own.
    void Append(const TFundRec &record);
    /// A list with a storage of its own and the same records.
    TFunds Copy() const;
    bool SharesStorageWith(const TFunds &other) const noexcept { return m_records == other.m_records; }

    /// For range loops; void after a change of length.
    std::vector<TFundRec>::iterator begin() const noexcept { return m_records->begin(); }
    std::vector<TFundRec>::iterator end() const noexcept { return m_records->end(); }

private:
    std::shared_ptr<std::vector<TFundRec>> m_records;
};

// TDynamicArrayOfInt, the list of funds' identifiers, stands in data/DataTypes.h, where the trees find it
// too.

/// A disinvestment of the host's product screens; this package neither reads nor writes its words.
using TRecDisinvestmentFund = std::array<quint32, 4>;
using TRecDisinvestmentFundArray = QList<TRecDisinvestmentFund>;

/// Which previous-investment questions were already asked, so that a quote asks each once only.
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
    /// Copies the four flags of another TShowedMessageStatus; any other source is refused as TPersistent
    /// does.
    void Assign(const QObject *source) override;

    bool AlreadyShowedWorldOGSQuestionMsg = false;     ///< resFund_WorldOGSPrevInv_Msg was asked
    bool AlreadyShowedOGSQuestionMsg = false;          ///< resFund_OGSPrevInv_Msg was asked
    bool AlreadyShowedBulWorldQuestionMsg = false;     ///< resFund_BulwarkWorldPrevInv_Msg was asked
    bool AlreadyShowedWorldOGS_INTQuestionMsg = false; ///< resFund_OGS_INTPrevInv_Msg was asked
};

/// The message texts of the quote screens by their numbers in the string table.
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

/// The text of @p message in the language of the translations installed at this moment (context
/// "misc_Types"). Load it where it is shown, not before.
ZEL_COMMONFRAMES_EXPORT QString LoadResString(TMessageText message);
/// The same by number; EListError naming the number when it is not one of the table's.
ZEL_COMMONFRAMES_EXPORT QString LoadResString(int number);
