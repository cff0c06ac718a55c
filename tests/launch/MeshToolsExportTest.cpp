// Hosts build the mesh settings dialog directly: its constructor is reachable in the shared
// library by name, as are those of the other mesh tools.
#include <dlfcn.h>
#include <gtest/gtest.h>

TEST(MeshToolsExport, meshSettingsAndReversalConstructorsAreExported)
{
    void* lib = dlopen(KWMFCUI_LIBRARY_PATH, RTLD_NOW);
    ASSERT_NE(lib, nullptr) << dlerror();
    for (const char* ctor :
         {"_ZN18CKwMFCUIMeshModel2C1EP7CFMViewP12CKwMeshModelP7QWidget",
          "_ZN22CKwMFCUIReverseNormalsC1EP7CFMViewP12CKwMeshModelP7QWidget",
          "_ZN35CKwMFCUIReverseLineElementDirectionC1EP7CFMViewP12CKwMeshModelP7QWidget"})
        EXPECT_NE(dlsym(lib, ctor), nullptr) << ctor;
    dlclose(lib);
}
