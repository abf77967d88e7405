// A host that includes Windows' own headers before the package's; windows_after.cpp has the other order.
#include <windows.h>

#include <oaidl.h>

// Included after Windows' headers on purpose.
#include "public_headers.h"
#include "windows_after.h"

#include "ZelTest.h"

using namespace Qt::StringLiterals;

namespace
{
/// An object of Windows' own IDispatch.
class SystemsOwn : public ::IDispatch
{
public:
    virtual ~SystemsOwn() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void **) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *count) override
    {
        *count = 7;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR *, UINT, LCID, DISPID *) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS *, VARIANT *, EXCEPINFO *,
                                     UINT *) override
    {
        return E_NOTIMPL;
    }
};

/// An object of the package's IDispatch.
class Finalisor : public Zel::IDispatch
{
};
} // namespace

class tst_windowsheaders : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void bothInterfacesStandSideBySide()
    {
        SystemsOwn system;
        UINT count = 0;
        QCOMPARE(static_cast<::IDispatch &>(system).GetTypeInfoCount(&count), S_OK);
        QCOMPARE(count, 7U);
        const IDispatchPtr own = std::make_shared<Finalisor>();
        QVERIFY(std::dynamic_pointer_cast<Finalisor>(own));
        QVERIFY(!std::dynamic_pointer_cast<IRibbonItem>(own));
    }

    // An object made in one file of a host is recognised in another, whatever order of includes each has.
    void theOrderMakesNoOtherClass()
    {
        QAction action;
        const IDispatchPtr made = madeWithWindowsAfter(&action);
        const auto item = std::dynamic_pointer_cast<IRibbonItem>(made);
        QVERIFY(item);
        QCOMPARE(item->put_Enabled(WordFalse), S_OK);
        QVERIFY(!action.isEnabled());
        QVERIFY(knownWithWindowsAfter(std::make_shared<TRibbonItem>(&action, u"rbSave"_s)));
        QVERIFY(!knownWithWindowsAfter(std::make_shared<Finalisor>()));
    }

    void theResultsAreTheSystems()
    {
        QCOMPARE(SafecallGuard([] {}), S_OK);
        const HResult failed = SafecallGuard([] { throw Exception(u"No paper."_s); });
        QCOMPARE(failed, E_FAIL);
        QVERIFY(FAILED(failed));
        QVERIFY_THROWS_EXCEPTION(ESafecallError, SafecallCheck(failed));
        QCOMPARE(SafecallGuard([] { throw 1; }), E_UNEXPECTED);
        SafecallCheck(S_OK);
    }
};

ZEL_TEST_MAIN(tst_windowsheaders)
#include "tst_windowsheaders.moc"
