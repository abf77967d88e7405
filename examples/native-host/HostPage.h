#pragma once

#include "package/ZelCommonFramesC.h"

#include <cstdint>
#include <functional>
#include <string>

/// What a host that is written with another toolkit does to show an allocation frame on a page of its own: it
/// finds the package's functions by name in the library it has loaded and uses nothing else. The same on
/// every system; the two hosts beside this folder add a window and a message loop.
class HostPage
{
public:
    /// Looks a function of the loaded library up; nullptr when it has none of that name.
    using Find = std::function<void *(const char *name)>;

    /// Starts the package and puts the frame into the parent window, filled with three funds of a small
    /// catalogue and an amount to split by percent. On failure nothing is left behind and error() says why.
    bool open(const Find &find, std::uintptr_t parentWindow);
    void setBounds(int left, int top, int width, int height);
    /// Gives the grid the keyboard.
    void focus();
    /// To be called again and again while the window is open: prints what is left when it has changed.
    void poll();
    /// For a message loop that does not serve the frames itself.
    void processEvents(int milliseconds);
    /// Whether everything has been given to the funds.
    bool isComplete() const { return m_remaining == "0"; }
    /// Prints the funds as the adviser left them.
    void printFunds();
    /// Destroys the frame and stops the package; the library may be unloaded then.
    bool close();

    const std::string &error() const { return m_error; }

private:
    struct Functions {
        decltype(&::Initialize) initialize;
        decltype(&::Finalize) finalize;
        decltype(&ZelLastError) lastError;
        decltype(&ZelProcessEvents) processEvents;
        decltype(&ZelFrameCreate) create;
        decltype(&ZelFrameDestroy) destroy;
        decltype(&ZelFrameSetBounds) setBounds;
        decltype(&ZelFrameShow) show;
        decltype(&ZelFrameFocus) focus;
        decltype(&ZelFrameSetProperty) setProperty;
        decltype(&ZelFrameGetProperty) getProperty;
        decltype(&ZelFrameSetTable) setTable;
        decltype(&ZelFrameCall) call;
        decltype(&ZelFrameSetFunds) setFunds;
        decltype(&ZelFrameGetFunds) getFunds;
        decltype(&ZelTableCreate) createTable;
        decltype(&ZelTableSetFields) setFields;
        decltype(&ZelTableAddRow) addRow;
        decltype(&ZelTableDestroy) destroyTable;
    };

    bool resolve(const Find &find);
    bool done(ZelResult result, const char *what);
    bool fill();

    Functions m_package{};
    ZelFrame *m_frame = nullptr;
    std::string m_remaining;
    std::string m_error;
};
