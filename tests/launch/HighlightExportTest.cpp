// Hosts build the highlight editor and its range dialog directly: their constructors are
// reachable in the shared library by name.
#include <dlfcn.h>
#include <gtest/gtest.h>

TEST(HighlightExport, editorAndRangeDialogConstructorsAreExported)
{
    void* lib = dlopen(KWMFCUI_LIBRARY_PATH, RTLD_NOW);
    ASSERT_NE(lib, nullptr) << dlerror();
    for (const char* ctor : {"_ZN25CKwMFCUIHighlightNodeElemC1EiP12CKwMeshModelP8CKwGroupiP7CFMViewP7QWidget",
                             "_ZN17CKwDefineRangeDlgC1EP7QWidget"})
        EXPECT_NE(dlsym(lib, ctor), nullptr) << ctor;
    dlclose(lib);
}
