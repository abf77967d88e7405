// The package's entry points, the unit table and the information record.
#include "ZelTest.h"

#include "funds/fra_FundAllocation.h"
#include "package/Version.h"
#include "package/ZelCommonFrames.h"

using namespace Qt::StringLiterals;

class tst_entrypoints : public ZelTest
{
    Q_OBJECT
    static QStringList unitOrder()
    {
        QStringList names;
        const TPackageInfoTable *table = GetPackageInfoTable();
        for (int i = 0; i < table->UnitCount; ++i)
            names.append(QString::fromLatin1(table->UnitInfo[i].UnitName));
        return names;
    }

private Q_SLOTS:
    void theUnitTableHasItsOrder()
    {
        QCOMPARE(unitOrder().join(QLatin1Char(' ')),
                 u"fra_BaseFrame ill_Misc fra_ToolBar fra_ElmtRadioButtonPictureField "
                 "fra_ElmtLabelComboBox fra_ElmtLabelDouble fra_ElmtLabelEdit fra_ElmtLabelInteger "
                 "fra_ElmtRadioButtonDouble fra_ElmtRadioButtonInteger fra_ElmtRadioButtonMaskedEdit "
                 "fra_ElmtCheckBoxDouble fra_InvestorName unt_BaseProductEditorImpl frm_BaseProductEditor "
                 "misc_Types fra_TreeView fra_Header fra_PageHeader fra_FundToolBar "
                 "fra_FundsSelectedListView fra_FundsTreeView fra_FundSelector frm_FundSelector "
                 "fra_FundAllocation fra_BaseNavBar fra_ElmtLabelMaskedEdit fra_ElmtLabelPictureField"_s);
    }

    void theRecordNamesRequiredPackagesAndUnits()
    {
        const TPackageInfo *info = GetPackageInfo();
        QCOMPARE(info->Flags,
                 quint32(TPackageInfo::Package | TPackageInfo::RunOnly | TPackageInfo::NeverBuild));
        QStringList required;
        for (int i = 0; i < info->RequiresCount; ++i)
            required.append(QString::fromLatin1(info->Requires[i].Name));
        QCOMPARE(required.join(QLatin1Char(' ')), u"bdertl60 ZelWrapper60 Tsg6201 o406_r60 rtl60"_s);
        for (int i = 0; i < info->RequiresCount; ++i) {
            int sum = 0;
            for (const char c : required.at(i).toUpper().toLatin1())
                sum += c;
            QCOMPARE(int(info->Requires[i].NameHash), sum % 256);
        }
        QStringList contained;
        for (int i = 0; i < info->ContainsCount; ++i)
            contained.append(QString::fromLatin1(info->Contains[i]));
        QCOMPARE(contained.join(QLatin1Char(' ')),
                 u"ZelCommonFrames misc_Types SysInit fra_InvestorName fra_ElmtLabelComboBox "
                 "frm_FundSelector fra_BaseFrame ill_Misc fra_FundSelector fra_FundsTreeView "
                 "fra_FundsSelectedListView fra_ElmtLabelPictureField fra_ElmtLabelMaskedEdit "
                 "fra_BaseNavBar fra_FundAllocation fra_FundToolBar fra_PageHeader fra_Header "
                 "fra_TreeView unt_BaseProductEditorImpl frm_BaseProductEditor fra_ToolBar "
                 "fra_ElmtCheckBoxDouble fra_ElmtRadioButtonMaskedEdit fra_ElmtRadioButtonInteger "
                 "fra_ElmtRadioButtonDouble fra_ElmtLabelInteger fra_ElmtLabelEdit fra_ElmtLabelDouble "
                 "fra_ElmtRadioButtonPictureField"_s);
    }

    void startUpLowersAndShutDownRaisesEveryCounter()
    {
        const int count = GetPackageInfoTable()->UnitCount;
        const auto all = [count](int value) {
            for (int i = 0; i < count; ++i)
                if (GetUnitCounter(i) != value)
                    return false;
            return true;
        };
        QVERIFY(all(0)); // loading ran no unit
        Initialize();
        QVERIFY(all(-1));
        Finalize();
        QVERIFY(all(0));
        ZelCommonFrames::PackageLoad();
        QVERIFY(all(-1));
        ZelCommonFrames::PackageUnload();
        QVERIFY(all(0));
        QCOMPARE(GetUnitCounter(-1), 0);
        QCOMPARE(GetUnitCounter(count), 0);
    }

    void eachEntryRunsItsOwnUnit()
    {
        const TPackageInfoTable *table = GetPackageInfoTable();
        for (int i = 0; i < table->UnitCount; ++i) {
            table->UnitInfo[i].Init();
            for (int j = 0; j < table->UnitCount; ++j)
                QCOMPARE(GetUnitCounter(j), i == j ? -1 : 0);
            table->UnitInfo[i].Final();
        }
    }

    // An amount is a property from the first frame on and accepts different types of value.
    void amountsAreSetByName()
    {
        Initialize();
        {
            TfraFundAllocation frame;
            QVERIFY(frame.setProperty("InvestmentAmount", u"100000.57"_s));
            QCOMPARE(frame.Get_InvestmentAmount().raw(), qint64(1'000'005'700));
            QVERIFY(frame.setProperty("InvestmentAmount", 250));
            QCOMPARE(frame.Get_InvestmentAmount().raw(), qint64(2'500'000));
            QVERIFY(frame.setProperty("InvestmentAmount", 0.5));
            QCOMPARE(frame.Get_InvestmentAmount().raw(), qint64(5'000));
        }
        QCOMPARE(Finalize(), 0);
    }

    void theVersionOfHeaderAndLibraryAgree()
    {
        QCOMPARE(ZelCommonFramesVersion(), ZELCOMMONFRAMES_VERSION_STR);
    }
};

ZEL_TEST_MAIN_NOT_STARTED(tst_entrypoints)
#include "tst_entrypoints.moc"
