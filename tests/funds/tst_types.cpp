// The fund records, the flags of questions already asked, and the message texts.
// labels: x11
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "funds/misc_Types.h"

#include <QDataStream>
#include <QMetaProperty>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace
{
// A translator that a host installs while the program runs.
class AfrikaansTable : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (qstrcmp(context, "misc_Types") == 0 && qstrcmp(source, "Additional Investment") == 0)
            return u"Bykomende Belegging"_s;
        return {};
    }
};

struct NumberedText {
    int number;
    TMessageText name;
    const char *text;
};
} // namespace

class StatusOfATest : public TShowedMessageStatus
{
    Q_OBJECT
    Q_PROPERTY(QString Note MEMBER Note)
    Q_PROPERTY(QObject *Other MEMBER Other STORED false)
public:
    QString Note;
    QObject *Other = nullptr;
};

class Unwritable : public TPersistent
{
    Q_OBJECT
    Q_PROPERTY(QObject *Other MEMBER Other)
public:
    QObject *Other = nullptr;
};

class tst_types : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void textsHaveTheirNumbersAndWordings_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("name");
        QTest::addColumn<QString>("text");
        const NumberedText rows[] = {
            {65520, TMessageText::resInvalidInvestmentDate, "The investment receipt date is invalid."},
            {65521, TMessageText::resInitialInvCaptionForAdditional, "Additional Investment"},
            {65522, TMessageText::resInitialInvAmtCaptionForAdditional, "Additional Investment Amount"},
            {65523, TMessageText::resFund_WorldOGSPrevInv_Msg,
             "Has the policyholder previously invested at least R50000 in a World Opal Growth Strategy Fund "
             "within this policy?"},
            {65524, TMessageText::resFund_OGSPrevInv_Msg,
             "Has the policyholder previously invested at least R50000 in an Opal Growth Strategy Fund "
             "within "
             "this policy?"},
            {65525, TMessageText::resFund_BulwarkWorldPrevInv_Msg,
             "Has the policyholder previously invested at least R50000 in a Bulwark World Fund within this "
             "policy?"},
            {65526, TMessageText::resFund_OGS_INTPrevInv_Msg,
             "Has the policyholder previously invested at least US$7500 in an World Opal Growth Strategy "
             "Fund "
             "within this policy?"},
            {65527, TMessageText::resBondInCurrentWeek_Msg,
             "The guaranteed rates, guaranteed values and projected values for Fixed Bonds apply only to "
             "investments received in the current working week (Monday to Friday). Since the investment "
             "receipt date selected is not in the current working week, Fixed Bonds are not available."},
            {65528, TMessageText::resGTDAnnuityInCurrentWeek_Msg,
             "The guaranteed rates and guaranteed values for the Guaranteed Annuity apply only to "
             "investments "
             "received in the current working week (Monday to Friday). Since the investment receipt date "
             "selected is not in the current working week, the Guaranteed Annuity is not available."},
            {65529, TMessageText::resInvalidBondCode,
             "Invalid Bond Code, please update your code before continuing."},
            {65530, TMessageText::resInvalidAnnuityCode,
             "Invalid Annuity Code, please update your code before continuing."},
            {65531, TMessageText::resRetIncSwitchInfoMsg,
             "NOTE: This quote is for illustration purposes only."},
            {65532, TMessageText::resNoRetirementFundNameMsg, "Retirement Fund Name is required."},
            {65533, TMessageText::resBondCodeWarning,
             "To keep the Fixed Bond selection please enter an investment receipt date in the current week "
             "(Monday-Friday)."},
            {65534, TMessageText::resBondOnlyWarning,
             "Since the Initial Investment amount is below R100000, only Fixed Bonds may be selected."},
            {65535, TMessageText::resFixedBondAvailabilityNote,
             "* Fixed Bonds are available if the Bond Code is valid and the Investment Receipt Date is in "
             "the "
             "current working week (Monday-Friday).  Multi-manager funds are available if the investor is "
             "not a "
             "company."},
        };
        for (const NumberedText &row : rows)
            QTest::addRow("%d", row.number) << row.number << int(row.name) << QString::fromUtf8(row.text);
    }
    void textsHaveTheirNumbersAndWordings()
    {
        QFETCH(int, number);
        QFETCH(int, name);
        QFETCH(QString, text);
        QCOMPARE(name, number);
        QCOMPARE(LoadResString(TMessageText(name)), text);
        QCOMPARE(LoadResString(number), text);
    }

    void aNumberOutsideTheTableIsRefused()
    {
        for (int number : {65519, 65536, 0, -1}) {
            try {
                LoadResString(number);
                QFAIL("no error");
            } catch (const EListError &error) {
                QVERIFY(error.message().contains(QString::number(number)));
            }
        }
    }

    void anInstalledTableChangesTheTextsAtOnce()
    {
        AfrikaansTable table;
        QCoreApplication::installTranslator(&table);
        QCOMPARE(LoadResString(TMessageText::resInitialInvCaptionForAdditional), u"Bykomende Belegging"_s);
        QCOMPARE(LoadResString(65532), u"Retirement Fund Name is required."_s);
        QCoreApplication::removeTranslator(&table);
        QCOMPARE(LoadResString(65521), u"Additional Investment"_s);
    }

    void flagsStartFalseInTheirOrder()
    {
        const TShowedMessageStatus status;
        const QMetaObject *meta = status.metaObject();
        QStringList names;
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
            names.append(QString::fromLatin1(meta->property(i).name()));
            QCOMPARE(meta->property(i).read(&status), QVariant(false));
        }
        QCOMPARE(names, (QStringList{u"AlreadyShowedWorldOGSQuestionMsg"_s, u"AlreadyShowedOGSQuestionMsg"_s,
                                     u"AlreadyShowedBulWorldQuestionMsg"_s,
                                     u"AlreadyShowedWorldOGS_INTQuestionMsg"_s}));
    }

    void assignCopiesAllFourFlags()
    {
        for (int bits = 0; bits < 16; ++bits) {
            TShowedMessageStatus from;
            from.AlreadyShowedWorldOGSQuestionMsg = (bits & 1) != 0;
            from.AlreadyShowedOGSQuestionMsg = (bits & 2) != 0;
            from.AlreadyShowedBulWorldQuestionMsg = (bits & 4) != 0;
            from.AlreadyShowedWorldOGS_INTQuestionMsg = (bits & 8) != 0;
            TShowedMessageStatus to; // false must overwrite true, too
            to.AlreadyShowedWorldOGSQuestionMsg = to.AlreadyShowedOGSQuestionMsg = true;
            to.AlreadyShowedBulWorldQuestionMsg = to.AlreadyShowedWorldOGS_INTQuestionMsg = true;
            to.Assign(&from);
            QCOMPARE(to.AlreadyShowedWorldOGSQuestionMsg, from.AlreadyShowedWorldOGSQuestionMsg);
            QCOMPARE(to.AlreadyShowedOGSQuestionMsg, from.AlreadyShowedOGSQuestionMsg);
            QCOMPARE(to.AlreadyShowedBulWorldQuestionMsg, from.AlreadyShowedBulWorldQuestionMsg);
            QCOMPARE(to.AlreadyShowedWorldOGS_INTQuestionMsg, from.AlreadyShowedWorldOGS_INTQuestionMsg);
        }
    }

    void assignTakesADescendantToo()
    {
        class Descendant : public TShowedMessageStatus
        {
        };
        Descendant from;
        from.AlreadyShowedBulWorldQuestionMsg = true;
        TShowedMessageStatus to;
        to.AlreadyShowedOGSQuestionMsg = true;
        to.Assign(&from);
        QVERIFY(to.AlreadyShowedBulWorldQuestionMsg);
        QVERIFY(!to.AlreadyShowedOGSQuestionMsg);
    }

    void assignOfAnotherClassFailsAndChangesNothing()
    {
        TShowedMessageStatus status;
        status.AlreadyShowedOGSQuestionMsg = true;
        TPersistent other;
        try {
            status.Assign(&other);
            QFAIL("no error");
        } catch (const EConvertError &error) {
            QCOMPARE(error.message(), u"Cannot assign a TPersistent to a TShowedMessageStatus."_s);
        }
        QVERIFY_THROWS_EXCEPTION(EConvertError, status.Assign(nullptr));
        QVERIFY(status.AlreadyShowedOGSQuestionMsg);
        QVERIFY(!status.AlreadyShowedWorldOGSQuestionMsg);
        QVERIFY(!status.AlreadyShowedBulWorldQuestionMsg);
        QVERIFY(!status.AlreadyShowedWorldOGS_INTQuestionMsg);
    }

    void flagsTravelThroughAStream()
    {
        for (int bits = 0; bits < 16; ++bits) {
            StatusOfATest from;
            from.AlreadyShowedWorldOGSQuestionMsg = (bits & 1) != 0;
            from.AlreadyShowedOGSQuestionMsg = (bits & 2) != 0;
            from.AlreadyShowedBulWorldQuestionMsg = (bits & 4) != 0;
            from.AlreadyShowedWorldOGS_INTQuestionMsg = (bits & 8) != 0;
            from.Note = u"more than a plain status has"_s;
            QByteArray bytes;
            QDataStream out(&bytes, QIODevice::WriteOnly);
            from.SaveTo(out);
            out << 42;
            TShowedMessageStatus to;
            to.AlreadyShowedWorldOGSQuestionMsg = to.AlreadyShowedOGSQuestionMsg = true;
            QDataStream in(bytes);
            to.LoadFrom(in);
            QCOMPARE(to.AlreadyShowedWorldOGSQuestionMsg, from.AlreadyShowedWorldOGSQuestionMsg);
            QCOMPARE(to.AlreadyShowedOGSQuestionMsg, from.AlreadyShowedOGSQuestionMsg);
            QCOMPARE(to.AlreadyShowedBulWorldQuestionMsg, from.AlreadyShowedBulWorldQuestionMsg);
            QCOMPARE(to.AlreadyShowedWorldOGS_INTQuestionMsg, from.AlreadyShowedWorldOGS_INTQuestionMsg);
            int behind = 0;
            in >> behind; // the reader has taken no more than was written
            QCOMPARE(behind, 42);
        }
    }

    void aBrokenStreamChangesNothing()
    {
        StatusOfATest status;
        status.AlreadyShowedOGSQuestionMsg = true;
        status.Note = u"mine"_s;
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        TShowedMessageStatus().SaveTo(out);
        for (qsizetype size = 0; size < bytes.size(); ++size) {
            QDataStream cut(bytes.left(size));
            QVERIFY_THROWS_EXCEPTION(EConvertError, status.LoadFrom(cut));
        }
        // A complete record with one value of the wrong type.
        QByteArray wrong;
        QDataStream odd(&wrong, QIODevice::WriteOnly);
        odd << QVariantMap{{u"AlreadyShowedOGSQuestionMsg"_s, false}, {u"Note"_s, QVariantList{1}}};
        QDataStream in(wrong);
        QVERIFY_THROWS_EXCEPTION(EConvertError, status.LoadFrom(in));
        QVERIFY(status.AlreadyShowedOGSQuestionMsg);
        QCOMPARE(status.Note, u"mine"_s);
        QDataStream nowhere(&bytes, QIODevice::WriteOnly);
        QVERIFY_THROWS_EXCEPTION(EConvertError, Unwritable().SaveTo(nowhere));
    }

    void aFundListSharesItsStorage()
    {
        TFunds host{{644, nullptr, 100, 50}, {658, nullptr, 0, 0}};
        TFunds frame = host;
        QVERIFY(frame.SharesStorageWith(host));
        frame[1].Amount = 25;
        QCOMPARE(host[1].Amount, Currency(25));
        frame.SetLength(3);
        QVERIFY(!frame.SharesStorageWith(host));
        frame[0].Amount = 1;
        QCOMPARE(host[0].Amount, Currency(100));
        QCOMPARE(host.Length(), 2);
        QCOMPARE(frame[2].FundID, 0);
        QVERIFY(frame[2].Bookmark == nullptr);
        TFunds copy = host.Copy();
        copy[0].FundID = 7;
        QCOMPARE(host[0].FundID, 644);
    }

    void aFundListRefusesWhatIsNotThere()
    {
        const TFunds empty;
        QCOMPARE(empty.Length(), 0);
        QVERIFY(empty.IsEmpty());
        QVERIFY_THROWS_EXCEPTION(EListError, empty[0]);
        QVERIFY_THROWS_EXCEPTION(EListError, empty[-1]);
        TFunds list;
        QVERIFY_THROWS_EXCEPTION(EListError, list.SetLength(-1));
        list.Append({5, nullptr, 1, 2});
        list.Append(list[0]);
        QCOMPARE(list.Length(), 2);
        QCOMPARE(list[1], list[0]);
    }
};

ZEL_TEST_MAIN(tst_types)
#include "tst_types.moc"
