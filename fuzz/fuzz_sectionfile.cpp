// Cross-section files come from outside the program: any bytes are read or refused, and a
// refused file leaves the section as it was.
#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"

#include <QApplication>
#include <QByteArray>
#include <cstdint>

namespace {

struct Snapshot
{
    int shape, tapered;
    std::array<double, 6> a, b;
    bool operator==(const Snapshot&) const = default;
};

Snapshot take(const CKwPhysicalProperty* p)
{
    return {p->m_sectionShape, p->m_tapered, p->m_dimA, p->m_dimB};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static QApplication* app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "fuzz_sectionfile";
        static char* argv[] = {name, nullptr};
        return new QApplication(argc, argv);
    }();
    (void)app;
    static KW_UOM units(KW_UOM::MMNS);
    static CKwPhysicalProperty property(1, QStringLiteral("Fuzz"));
    static CKwDefineCrossSectionDlg* dlg = [] {
        property.m_elementKind = CKwPhysicalProperty::KindBeam;
        auto* d = new CKwDefineCrossSectionDlg(&property, &units, nullptr);
        d->Create();
        return d;
    }();
    const Snapshot before = take(dlg->GetWorkingCopy());
    const bool loaded = dlg->LoadFromBytes(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!loaded && !(take(dlg->GetWorkingCopy()) == before))
        __builtin_trap(); // a refused file changed the section
    // Whatever was read must be checked and drawn without harm.
    dlg->ValidateDimensions(1);
    dlg->DrawCrossSection(1);
    return 0;
}
