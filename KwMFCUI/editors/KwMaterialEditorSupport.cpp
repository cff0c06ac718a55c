#include "KwMaterialEditorSupport.h"

#include "CKwAnalysis.h"
#include "CKwFunction.h"
#include "CKwMFCUIBase.h"
#include "CKwMaterialBrowserDlg.h"
#include "CKwMaterialNonlinearDialog.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KW_UOM.h"
#include "KwMessageBox.h"
#include "CKwMaterial.h"
#include "CKwUIMaterial.h"
#include "KwLangText.h"
#include "KwMaterialDatabase.h"
#include "KwMaterialKeys.h"
#include "KwNumbers.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

struct TypeRow
{
    int type;
    const char* key;
    const char* english;
};

constexpr TypeRow kTypes[] = {
    {CKwMaterial::Isotropic, "DropDownIsotropic", "Isotropic"},
    {CKwMaterial::Orthotropic2D, "DropDownOrthotropic2D", "Orthotropic 2D"},
    {CKwMaterial::Orthotropic3D, "DropDownOrthotropic3D", "Orthotropic 3D"},
    {CKwMaterial::Anisotropic3D, "DropDownAnisotropic3D", "Anisotropic 3D"},
    {CKwMaterial::Hyperelastic, "DropDownHyperelastic", "Hyperelastic"},
    {CKwMaterial::Nitinol, "DropDownNitinol", "Nitinol"},
    {CKwMaterial::Viscoelastic, "DropDownViscoElastic", "Viscoelastic"},
    {CKwMaterial::CrushableFoam, "DropDownCrushableFoam", "Crushable Foam"},
    {CKwMaterial::Rigid, "DropDownRigid", "Rigid"},
    {CKwMaterial::Concrete, "DropDownConcrete", "Concrete"},
};

// Analysis type codes below 19 whose bit is set here take nonlinear material data (5, 13, 18).
constexpr unsigned kNonlinearCodes = 270368; // 0x42020

bool isExplicit(const CKwAnalysis* a) { return a && a->IsExplicitAnalysis(); }

} // namespace

QString KwMaterialTypeText(int type)
{
    for (const TypeRow& r : kTypes)
        if (r.type == type)
            return KwPropText("Materials", r.key, r.english);
    return QString();
}

QList<KwMaterialTypeItem> KwMaterialTypeItems(bool explicitEnabled, bool offerRigid,
                                              bool offerConcrete)
{
    QList<KwMaterialTypeItem> items;
    for (const TypeRow& r : kTypes) {
        if ((r.type == CKwMaterial::CrushableFoam && !explicitEnabled) ||
            (r.type == CKwMaterial::Rigid && !offerRigid) ||
            (r.type == CKwMaterial::Concrete && !offerConcrete))
            continue;
        items.append({r.type, KwPropText("Materials", r.key, r.english)});
    }
    return items;
}

QStringList KwMaterialTypeAdvisories(int type, const CKwAnalysis* analysis,
                                     const CKwMaterial* material)
{
    QStringList out;
    const QString text = KwMaterialTypeText(type);
    if (isExplicit(analysis) && (type == CKwMaterial::Orthotropic3D ||
                                 type == CKwMaterial::Anisotropic3D ||
                                 type == CKwMaterial::Hyperelastic))
        out << KwErrText("Materials", "MaterialExplicitNotSupported",
                         "%s materials not supported in Explicit analyses.")
                   .replace(QLatin1String("%s"), text);
    if (type == CKwMaterial::CrushableFoam && !isExplicit(analysis))
        out << KwErrText("Materials", "MaterialExplicitDynamics",
                         "%s Material data will not be applicable until an Explicit analysis "
                         "has been selected.")
                   .replace(QLatin1String("%s"), text);
    if (type == CKwMaterial::Rigid && !isExplicit(analysis))
        out << KwErrText("Materials", "MaterialExplicitNotSupportedForRigid",
                         "Rigid Material data will not be applicable until a Explicit analysis "
                         "has been selected.");
    if (analysis && !KwTakesNonlinearMaterialData(analysis) &&
        (type == CKwMaterial::Hyperelastic || type == CKwMaterial::Viscoelastic ||
         type == CKwMaterial::Nitinol))
        out << text + QLatin1Char(' ') +
                   KwErrText("Materials", "MaterialDataNotApplicableForLinearMaterials",
                             "material will not be applicable until a Nonlinear analysis "
                             "has been selected.");
    if (isExplicit(analysis) && material) {
        namespace K = KwMaterialKeys;
        // Thermal values the new type shows and holds; the reference temperature every
        // material starts with is no thermal data.
        bool thermal = false;
        for (int key : CKwMaterial::KeysForType(type))
            if (key == K::KX || key == K::C || (key >= K::K11 && key <= K::K23))
                thermal = thermal || !IsMissingValue(material->GetValue(key));
        if (thermal)
            out << KwErrText("Materials", "MaterialThermalNotSupported",
                             "Thermal material properties not supported in Explicit analyses.");
    }
    return out;
}

bool KwTakesNonlinearMaterialData(const CKwAnalysis* analysis)
{
    const int code = analysis ? analysis->GetAnalysisTypeCode() : -1;
    return code >= 0 && code < 19 && ((kNonlinearCodes >> code) & 1u);
}

int KwMaterialDialogWidth(int type) { return type == CKwMaterial::Hyperelastic ? 692 : 667; }

bool KwLoadMaterialFromDB(QWidget* parent, CKwUIMaterial* logic, bool ownFilesOnly,
                          const KwMaterialFileChooser& chooser, const KwMaterialPicker& picker)
{
    if (!logic)
        return false;
    const QString own = KwPropText("Materials", "FilterMaterialFiles",
                                   "Material Files (*.svrmat)|*.svrmat|");
    const QString filter =
        ownFilesOnly ? own
                     : own + KwPropText("Materials", "FilterExchangeFiles",
                                        "Material Libraries (*.kwimat *.xml)|*.kwimat;*.xml|") +
                           KwPropText("Materials", "FilterCADMaterialFiles",
                                      "CAD Material Files (*.sldmat)|*.sldmat|");
    const QString ext = ownFilesOnly ? QStringLiteral("svrmat") : QStringLiteral("xml");
    const QString folder = KwMaterialDatabase::DatabaseFolder();
    QString path;
    if (chooser) {
        path = chooser(folder, filter, ext);
    } else {
        QFileDialog dlg(parent, QString(), folder);
        dlg.setNameFilters(CKwMFCUIBase::FileDialogFilters(filter));
        dlg.setFileMode(QFileDialog::ExistingFile);
        dlg.setDefaultSuffix(ext);
        if (dlg.exec() == QDialog::Accepted && !dlg.selectedFiles().isEmpty())
            path = dlg.selectedFiles().first();
    }
    if (path.isEmpty())
        return false;
    KwMaterialDatabase::RememberFolder(QDir::cleanPath(QFileInfo(path).absolutePath()));
    // A library holds many materials: the user chooses one by name and type. A refused file
    // goes straight to the logic, which says why.
    int which = 0;
    const KwMaterialDatabase::ReadResult r = KwMaterialDatabase::ReadFile(path);
    if (r.ok && r.materials.size() > 1) {
        QList<KwMaterialEntry> entries;
        entries.reserve(r.materials.size());
        for (const CKwMaterial& m : r.materials)
            entries.append({m.GetName(), m.GetMaterialType()});
        if (picker) {
            which = picker(entries);
        } else {
            CKwMaterialBrowserDlg browser(nullptr, parent);
            browser.AddFile(path, false);
            const KwLibraryMaterial* chosen =
                browser.DoModal() == KwMB::IDOK ? browser.GetChosenMaterial() : nullptr;
            which = chosen ? chosen->position : -1;
        }
        if (which < 0 || which >= entries.size())
            return false;
    }
    return logic->LoadMaterialFromFile(path, which);
}

bool KwBrowseMaterialLibrary(QWidget* parent, CKwUIMaterial* logic, KW_UOM* units)
{
    if (!logic)
        return false;
    CKwMaterialBrowserDlg browser(units, parent);
    browser.AddFolder(KwMaterialDatabase::DatabaseFolder());
    if (browser.DoModal() != KwMB::IDOK)
        return false;
    const KwLibraryMaterial* chosen = browser.GetChosenMaterial();
    return chosen && logic->LoadMaterialFromFile(chosen->file, chosen->position);
}

bool KwEditMaterialCurve(QWidget* parent, CKwUIMaterial* logic, int curve, KW_UOM* units,
                         CFMView* view)
{
    if (!logic || curve < 0 || curve >= CKwMaterial::CurveCount || !logic->GetEditObject())
        return false;
    // The dialogs edit a host table; the material keeps its curves as plain point lists, so a
    // table is made for the dialog and read back only when the dialog ends with OK.
    using C = CKwMaterial;
    const CKwTable::TableType kind = curve == C::StressStrain ? CKwTable::StressStrainCurve
                                     : curve == C::ConductivityVsTemperature
                                         ? CKwTable::TemperatureTable
                                         : CKwTable::General;
    static constexpr KwTextRow kCurveNames[C::CurveCount] = {
        {0, "Materials", "CurveStressStrain", "Stress-Strain Curve"},
        {0, "Materials", "SimpleTandC", "Simple Tension / Compression"},
        {0, "Materials", "EquibiaxialTension", "Equibiaxial Tension"},
        {0, "Materials", "SimpleShear", "Simple Shear"},
        {0, "Materials", "PureVolumetricCompression", "Pure Volumetric Compression"},
        {0, "Materials", "PureShear", "Pure Shear"},
        {0, "Materials", "ThermalConductivityTable", "Thermal Conductivity"},
    };
    const KwTextRow& n = kCurveNames[curve];
    CKwTable table(0, KwPropText(n.section, n.key, n.english), kind);
    if (curve == C::ConductivityVsTemperature)
        table.GetYFunction()->SetUnitType(KwUnitKind::ThermalConductivity);
    else if (kind == CKwTable::General) // experimental data: strain against stress
        table.GetYFunction()->SetUnitType(KwUnitKind::Stress);
    const KwMaterialCurve& data = logic->GetCurve(curve);
    for (int i = 0; i < data.Size(); ++i)
        table.AddPoint(data.x[i], i < int(data.y.size()) ? data.y[i] : MissingDouble);
    if (curve == C::StressStrain)
        table.m_trueValues = logic->GetEditObject()->m_stressStrainTrue;

    bool accepted = false;
    if (curve == C::StressStrain) {
        CKwMaterialNonlinearDialog dlg(&table, units, view,
                                       logic->GetEditObject()->GetName(), parent);
        dlg.SetElasticModulus(logic->GetEditObject()->GetValue(QStringLiteral("EX")));
        accepted = dlg.DoModal() == KwMB::IDOK;
    } else {
        std::unique_ptr<CKwTableDialog> dlg(CKwTableDialog::NewFor(&table, parent));
        dlg->SetTable(view, &table, units, logic->GetEditObject());
        accepted = dlg->DoModal() == KwMB::IDOK;
    }
    if (!accepted)
        return false;
    KwMaterialCurve out;
    const CKwFunction* x = table.GetXFunction();
    const CKwFunction* y = table.GetYFunction();
    const int count = std::min(x->GetSize(), y->GetSize());
    out.x.reserve(count);
    out.y.reserve(count);
    for (int i = 0; i < count; ++i) {
        out.x.push_back(x->GetValue(i));
        out.y.push_back(y->GetValue(i));
    }
    logic->SetCurve(curve, out);
    if (curve == C::StressStrain)
        logic->GetEditObject()->m_stressStrainTrue = table.m_trueValues;
    return true;
}
