#ifndef ZELCOMMONFRAMESC_H
#define ZELCOMMONFRAMESC_H

/** @file
   The package for hosts that are not written with the package's toolkit, or not in C++: plain functions over
   opaque handles, the same on every system. All texts are UTF-8 and end with a zero; one that is not UTF-8 is
   refused with ZEL_BAD_VALUE.

   Initialize() comes first. The first frame brings up what the frames need of an application, unless the host
   has an application object of the toolkit itself; Finalize() takes it down again. Everything is called on
   one thread, the one whose message loop serves the windows.

   Every function answers with a ZelResult: 0, or a negative number for the kind of failure. A failure changes
   nothing unless the function says otherwise, is never an exception or a crash, and leaves its reason in
   plain words for ZelLastError(). */

#include "export/zel_commonframes_export.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The answer of every function: 0, or one of the negative numbers below. */
typedef int32_t ZelResult;

/** What a call can answer. */
enum {
    ZEL_OK = 0,                   /**< the call did what it says */
    ZEL_FAILED = -1,              /**< the operation itself raised an error */
    ZEL_NOT_INITIALIZED = -2,     /**< before Initialize or after Finalize */
    ZEL_ALREADY_INITIALIZED = -3, /**< Initialize was called before */
    ZEL_NO_DISPLAY = -4,          /**< there is no screen, or the toolkit's plugin for it is missing */
    ZEL_NO_CLASS = -5,            /**< the package has no class of that name */
    ZEL_NO_WINDOW = -6,           /**< the parent window is not there, or not any more */
    ZEL_NO_HANDLE = -7,           /**< not a frame or table that is alive */
    ZEL_NO_NAME = -8,             /**< no component, property or operation of that name */
    ZEL_BAD_VALUE = -9,         /**< a null pointer, or a text that is not UTF-8 or not of the value's type */
    ZEL_BUFFER_TOO_SMALL = -10, /**< the length that is needed was handed back */
    ZEL_FRAMES_ALIVE = -11,     /**< Finalize was called while frames were alive */
    ZEL_WRONG_THREAD = -12      /**< not the thread of the first frame */
};

/** A frame or form of the package. */
typedef struct ZelFrame ZelFrame;
/** Rows for a frame: typed fields, any number of rows. */
typedef struct ZelTable ZelTable;

/** One fund of an allocation. Both amounts are in ten-thousandths: 1000.00 rand is 10000000, 33.33 % is
 * 333300. */
typedef struct ZelFund {
    int32_t FundID;  /**< the fund's number in the catalogue */
    int64_t Amount;  /**< rand */
    int64_t Percent; /**< percent of the investment */
} ZelFund;

/** Delivers the rows that a frame asks a provider for. The parameters come as names and values; rows is an
   empty table without fields, to be given fields with ZelTableSetFields and rows with ZelTableAddRow. It
   belongs to the package. A negative answer is a failure of the provider. Until it answers, no frame can be
   destroyed. */
typedef ZelResult (*ZelProvider)(void *context, const char *const *names, const char *const *values,
                                 size_t count, ZelTable *rows);

/* ---- the package ---- */

/** Starts the package. ZEL_ALREADY_INITIALIZED, with nothing done, when it is started. */
ZEL_COMMONFRAMES_EXPORT ZelResult Initialize(void);
/** Stops it; the library may then be unloaded. ZEL_FRAMES_ALIVE, with nothing done, while a frame or a form
   is alive: one that ZelFrameCreate made, a dialog that such a frame opened, one that C++ made; ZEL_FAILED
   from inside ZelProcessEvents. Tables that are left are freed. */
ZEL_COMMONFRAMES_EXPORT ZelResult Finalize(void);
/** Why the last failed call on this thread failed; empty when none did. Valid until the next failure. */
ZEL_COMMONFRAMES_EXPORT const char *ZelLastError(void);
/** Lets the frames do what is due, waiting up to that many milliseconds for something to do. On Windows the
   host's own message loop does this. A host on X11 calls it from its loop, about fifty times a second. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelProcessEvents(int32_t milliseconds);
/** What a provider name (such as "dspFundMessage") delivers from now on; a null pointer takes it away. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelSetProvider(const char *name, ZelProvider provider, void *context);

/* ---- frames ---- */

/** Creates a frame or form by class name, hidden. parentWindow is the window it is to stand in, the number
   that the system knows it by (HWND, X11 window id), or 0 for a window of its own. The frame must be
   destroyed with ZelFrameDestroy, also when its parent window went away first. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameCreate(const char *className, uintptr_t parentWindow,
                                                 ZelFrame **frame);
/** Destroys a frame, wherever its parent window is. Refused while an operation of the frame is running or a
   provider is being asked. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameDestroy(ZelFrame *frame);
/** Place in the parent window and size, in pixels of the screen. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetBounds(ZelFrame *frame, int32_t left, int32_t top, int32_t width,
                                                    int32_t height);
/** Shows (1) or hides (0) the frame. A frame sets itself up after it was first painted. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameShow(ZelFrame *frame, int32_t visible);
/** Gives the frame the keyboard. A click into it does the same. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameFocus(ZelFrame *frame);
/** The frame's own window, for the host's layout. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameWindow(ZelFrame *frame, uintptr_t *window);

/** A property of the frame ("InvestmentAmount") or of one of its components ("pnlAmount.caption"). Truth
   values are "true" and "false", numbers are written with "." and without separators, enumerations by name.
 */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetProperty(ZelFrame *frame, const char *name, const char *value);
/** Writes the property's text with its zero into value, which holds size bytes, and its length without the
   zero into length unless that is null. With a size of 0 only the length is asked for. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameGetProperty(ZelFrame *frame, const char *name, char *value,
                                                      size_t size, size_t *length);
/** Gives a property that takes a dataset ("FundsPerProductDataSet") the rows of a table. The table stays the
   caller's and may be freed at once. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetTable(ZelFrame *frame, const char *name, ZelTable *table);
/** Calls an operation of the frame ("ResetValues") or of one of its components
   ("fraFundToolBar.sbtAllocateAmount.click") with arguments as texts, written as property values are. What it
   answers is handed back as ZelFrameGetProperty does; result and length may be null. A result that does not
   fit is lost: the operation has been carried out all the same. The answer 0 says that the operation ran, not
   that it found something to do: "AddFundIDToList" with a fund that the product does not offer answers 0 and
   adds nothing. The property "FundCount" before and after tells, and ZelFrameSetAllocation says which funds
   were not taken. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameCall(ZelFrame *frame, const char *operation,
                                               const char *const *arguments, size_t count, char *result,
                                               size_t size, size_t *length);

/** Hands a list of funds to a TfraFundAllocation and shows it, for the given product group. Funds that the
   product does not offer are dropped with their amounts, and the answer is 0 all the same;
   ZelFrameSetAllocation tells which they were. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetFunds(ZelFrame *frame, const ZelFund *funds, size_t count,
                                                   int32_t productGroup);
/** Reads the list back in the order of the grid's rows: up to capacity funds, and how many there are into
   count. ZEL_BUFFER_TOO_SMALL when there are more. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameGetFunds(ZelFrame *frame, ZelFund *funds, size_t capacity,
                                                   size_t *count);
/** Hands a kept allocation to a TfraFundAllocation, as ZelFrameGetFunds gave it, and tells what had to be
   left out: the rows of funds that the product does not offer go into leftOut, in the order given, up to
   capacity of them, and how many there are into leftOutCount unless that is null. There are never more than
   count, and leftOut may be the place of funds itself. ZEL_BUFFER_TOO_SMALL when there are more than
   capacity: the other funds are shown all the same. ZEL_FAILED before "FundsPerProductDataSet" was set; no
   other fund is shown then either. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetAllocation(ZelFrame *frame, const ZelFund *funds, size_t count,
                                                        int32_t productGroup, ZelFund *leftOut,
                                                        size_t capacity, size_t *leftOutCount);

/* ---- tables ---- */

/** Makes a table without fields. It is the caller's until ZelTableDestroy. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableCreate(ZelTable **table);
/** The fields of a table that has none yet, each as "name:type". The types are integer, largeint, float,
   currency, boolean, date, datetime and string. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableSetFields(ZelTable *table, const char *const *fields, size_t count);
/** Adds a row: a text for each field, or a null pointer for no value. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableAddRow(ZelTable *table, const char *const *values, size_t count);
/** Frees a table. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableDestroy(ZelTable *table);

#ifdef __cplusplus
}
#endif

#endif
