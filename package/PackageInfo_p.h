#pragma once

/* The package information record. The compiler reads it for GetPackageInfo. On Windows the resource compiler
   also reads it, for the resource PACKAGEINFO of the library. */

#define ZEL_PACKAGE_FLAGS 0x40000005

/* X(name, hash): the hash as a text of one byte */
#define ZEL_REQUIRED_COUNT 5
#define ZEL_REQUIRED_PACKAGES(X)                                                                             \
    X("bdertl60", "\x23")                                                                                    \
    X("ZelWrapper60", "\x72")                                                                                \
    X("Tsg6201", "\xb7")                                                                                     \
    X("o406_r60", "\x00")                                                                                    \
    X("rtl60", "\x58")

/* X(name) in the order of the record */
#define ZEL_CONTAINED_COUNT 30
#define ZEL_CONTAINED_UNITS(X)                                                                               \
    X("ZelCommonFrames")                                                                                     \
    X("misc_Types")                                                                                          \
    X("SysInit")                                                                                             \
    X("fra_InvestorName")                                                                                    \
    X("fra_ElmtLabelComboBox")                                                                               \
    X("frm_FundSelector")                                                                                    \
    X("fra_BaseFrame")                                                                                       \
    X("ill_Misc")                                                                                            \
    X("fra_FundSelector")                                                                                    \
    X("fra_FundsTreeView")                                                                                   \
    X("fra_FundsSelectedListView")                                                                           \
    X("fra_ElmtLabelPictureField")                                                                           \
    X("fra_ElmtLabelMaskedEdit")                                                                             \
    X("fra_BaseNavBar")                                                                                      \
    X("fra_FundAllocation")                                                                                  \
    X("fra_FundToolBar")                                                                                     \
    X("fra_PageHeader")                                                                                      \
    X("fra_Header")                                                                                          \
    X("fra_TreeView")                                                                                        \
    X("unt_BaseProductEditorImpl")                                                                           \
    X("frm_BaseProductEditor")                                                                               \
    X("fra_ToolBar")                                                                                         \
    X("fra_ElmtCheckBoxDouble")                                                                              \
    X("fra_ElmtRadioButtonMaskedEdit")                                                                       \
    X("fra_ElmtRadioButtonInteger")                                                                          \
    X("fra_ElmtRadioButtonDouble")                                                                           \
    X("fra_ElmtLabelInteger")                                                                                \
    X("fra_ElmtLabelEdit")                                                                                   \
    X("fra_ElmtLabelDouble")                                                                                 \
    X("fra_ElmtRadioButtonPictureField")
