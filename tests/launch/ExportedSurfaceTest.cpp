// What a host can reach in the shared library: the four C entries, the exported dialog
// classes, and nothing of the library's internals.
#include "KwMFCUIEntry.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

TEST(ExportedSurface, offersTheFourEntriesAndHidesInternals)
{
    void* lib = dlopen(KWMFCUI_LIBRARY_PATH, RTLD_NOW | RTLD_NOLOAD);
    if (!lib)
        lib = dlopen(KWMFCUI_LIBRARY_PATH, RTLD_NOW);
    ASSERT_NE(lib, nullptr) << dlerror();
    for (const char* entry : {"LaunchDialog", "CreateKwDialog", "DeleteKwDialog",
                              "CallKwDialogFunction"})
        EXPECT_NE(dlsym(lib, entry), nullptr) << entry;
    // The impact editor's constructor, for hosts that build it directly.
    EXPECT_NE(dlsym(lib, "_ZN22CKwMFCUIImpactAnalysisC1EP15CKwImpactWizardP11CKwAnalysisP7CFMView"
                         "P6KW_UOMP7QWidget"),
              nullptr);
    // Internal helpers of the dispatch and the module scope stay hidden.
    for (const char* hidden : {"_Z17KwFindLaunchEntryj", "_ZN13KwModuleScopeC1Ev",
                               "_ZN15KwStatusWindows6CreateEj"})
        EXPECT_EQ(dlsym(lib, hidden), nullptr) << hidden;
    dlclose(lib);
}

TEST(ExportedSurface, entriesResolvedAtRunTimeWorkLikeLinkedOnes)
{
    void* lib = dlopen(KWMFCUI_LIBRARY_PATH, RTLD_NOW);
    ASSERT_NE(lib, nullptr) << dlerror();
    using Launch = void (*)(DialogLaunchRequest*);
    using Call = std::int32_t (*)(std::uint32_t, std::uint32_t, const wchar_t*, std::int32_t,
                                  CFMView*, void*);
    auto launch = reinterpret_cast<Launch>(dlsym(lib, "LaunchDialog"));
    auto call = reinterpret_cast<Call>(dlsym(lib, "CallKwDialogFunction"));
    ASSERT_TRUE(launch && call);
    launch(nullptr);
    DialogLaunchRequest ignored{};
    ignored.kind = 19;
    launch(&ignored);
    EXPECT_EQ(call(0xFFFFFFFF, 0xFFFFFFFF, nullptr, 0, nullptr, nullptr), 0);
    dlclose(lib);
}
