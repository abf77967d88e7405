// Parts that exist on Windows only: the system's list views, resources, and calls by name as from a host in
// C.
// labels: x11
#include "ZelTest.h"

#include "dataviews/ill_Misc.h"
#include "frames/fra_BaseFrame.h"
#include "package/ZelCommonFrames.h"

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace
{
HMODULE library()
{
    return GetModuleHandleW(L"ZelCommonFrames.dll");
}

/// A window of the system class of that name, destroyed with this object.
class SystemWindow
{
public:
    explicit SystemWindow(const wchar_t *name)
        : m_window(CreateWindowExW(0, name, L"", WS_POPUP | LVS_REPORT, 0, 0, 300, 100, nullptr, nullptr,
                                   GetModuleHandleW(nullptr), nullptr))
    {
    }
    ~SystemWindow() { DestroyWindow(m_window); }
    SystemWindow(const SystemWindow &) = delete;
    SystemWindow &operator=(const SystemWindow &) = delete;
    HWND get() const { return m_window; }
    int handle() const { return static_cast<int>(reinterpret_cast<std::intptr_t>(m_window)); }

private:
    HWND m_window;
};

QString titleOf(HWND list, int column)
{
    std::array<wchar_t, 32> text{};
    LVCOLUMNW description{};
    description.mask = LVCF_TEXT;
    description.pszText = text.data();
    description.cchTextMax = static_cast<int>(text.size());
    return SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                        reinterpret_cast<LPARAM>(&description))
               ? QString::fromWCharArray(text.data())
               : QString();
}
class CountingFrame : public TBaseFrame
{
public:
    int initialised = 0;

protected:
    void InitializeFrame() override { ++initialised; }
};
} // namespace

class tst_system : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void aColumnOfAListViewOfTheSystemIsDeleted()
    {
        INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), ICC_LISTVIEW_CLASSES};
        QVERIFY(InitCommonControlsEx(&controls));
        const SystemWindow list(L"SysListView32");
        QVERIFY(list.get());
        std::array titles{L"Fund", L"Amount", L"Percent"};
        for (std::size_t i = 0; i < titles.size(); ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.cx = 60;
            column.pszText = const_cast<wchar_t *>(titles[i]);
            SendMessageW(list.get(), LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
        }
        QCOMPARE(titleOf(list.get(), 1), u"Amount"_s);
        misc_DeleteListViewColumn(list.handle(), 1);
        QCOMPARE(titleOf(list.get(), 0), u"Fund"_s);
        QCOMPARE(titleOf(list.get(), 1), u"Percent"_s);
        misc_DeleteListViewColumn(list.handle(), 7);
        misc_DeleteListViewColumn(list.handle(), -1);
        QCOMPARE(titleOf(list.get(), 1), u"Percent"_s);
        // other windows and invalid handles are ignored
        const SystemWindow label(L"STATIC");
        misc_DeleteListViewColumn(label.handle(), 0);
        misc_DeleteListViewColumn(0x7ffffff1, 0);
    }

    void theInitializationMessageComesFromOutside()
    {
        CountingFrame frame;
        frame.show();
        QVERIFY(QTest::qWaitForWindowExposed(&frame));
        QTRY_COMPARE(frame.initialised, 1);
        if (QGuiApplication::platformName() == u"offscreen"_s)
            return; // offscreen the frame has no native window
        const auto window = reinterpret_cast<HWND>(frame.winId());
        QVERIFY(PostMessageW(window, WM_USER + 500, 0, 0));
        QTRY_COMPARE(frame.initialised, 2);
        QVERIFY(PostMessageW(window, WM_USER + 501, 0, 0));
        QTest::qWait(50);
        QCOMPARE(frame.initialised, 2);
    }

    void everyLibraryTellsItsVersion()
    {
        for (const wchar_t *name :
             {L"ZelData.dll", L"ZelToolkit.dll", L"ZelHost.dll", L"ZelCommonFrames.dll"}) {
            std::array<wchar_t, 1024> path{};
            QVERIFY(GetModuleFileNameW(GetModuleHandleW(name), path.data(), static_cast<DWORD>(path.size())));
            DWORD ignored = 0;
            const DWORD size = GetFileVersionInfoSizeW(path.data(), &ignored);
            QVERIFY2(size > 0, qPrintable(QString::fromWCharArray(name)));
            QByteArray data(static_cast<int>(size), '\0');
            QVERIFY(GetFileVersionInfoW(path.data(), 0, size, data.data()));
            VS_FIXEDFILEINFO *info = nullptr;
            UINT length = 0;
            QVERIFY(VerQueryValueW(data.data(), L"\\", reinterpret_cast<void **>(&info), &length));
            QCOMPARE(info->dwFileVersionMS, DWORD(0x00010000));
            QCOMPARE(info->dwFileType, DWORD(VFT_DLL));
        }
    }

    void theInformationRecordIsAResource()
    {
        const HRSRC found = FindResourceW(library(), L"PACKAGEINFO", reinterpret_cast<LPCWSTR>(RT_RCDATA));
        QVERIFY(found);
        const auto *data = static_cast<const char *>(LockResource(LoadResource(library(), found)));
        const char *end = data + SizeofResource(library(), found);
        const auto number = [&data] {
            qint32 value = 0;
            std::memcpy(&value, data, sizeof value);
            data += sizeof value;
            return value;
        };
        const auto text = [&data] {
            const QByteArray value(data);
            data += value.size() + 1;
            return value;
        };
        const TPackageInfo *info = GetPackageInfo();
        QCOMPARE(number(), qint32(info->Flags));
        QCOMPARE(number(), info->RequiresCount);
        for (int i = 0; i < info->RequiresCount; ++i) {
            QCOMPARE(static_cast<std::uint8_t>(*data++), info->Requires[i].NameHash);
            QCOMPARE(text(), QByteArray(info->Requires[i].Name));
        }
        QCOMPARE(number(), info->ContainsCount);
        for (int i = 0; i < info->ContainsCount; ++i)
            QCOMPARE(text(), QByteArray(info->Contains[i]));
        QVERIFY(data <= end && end - data < 4); // the resource compiler pads to a multiple of four bytes
    }

    void theEntryPointsHaveTheirPlainNames()
    {
        for (const char *name :
             {"Initialize", "Finalize", "GetPackageInfoTable", "GetPackageInfo", "GetUnitCounter",
              "CreateByClassName", "ZelCommonFramesVersion", "ZelFrameCreate", "ZelLastError"})
            QVERIFY2(GetProcAddress(library(), name), name);
    }
};

ZEL_TEST_MAIN(tst_system)
#include "tst_system.moc"
