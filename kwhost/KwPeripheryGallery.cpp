#include "KwPeripheryGallery.h"

#include "CKwMaterialBrowserDlg.h"
#include "CKwMaterialCompareDlg.h"
#include "CKwFEModel.h"
#include "CKwSNCurveDialog.h"
#include "KwHostWindow.h"
#include "KwMaterialDatabase.h"

#include <QApplication>

void KwPeripheryGallery(KwHostWindow* host,
                        const std::function<void(QWidget* window, const char* file)>& shoot)
{
    // The browser on the shipped library with two steels selected for comparison, and their
    // comparison.
    CKwMaterialBrowserDlg browser(host->Units());
    browser.AddFolder(KwMaterialDatabase::DatabaseFolder());
    browser.Create();
    browser.show();
    browser.SetSearchText(QStringLiteral("steel"));
    if (browser.SelectShownRows(0, 1)) {
        shoot(&browser, "tmpl355-material-library.png");
        const KwMaterialLibraryModel* m = browser.GetModel();
        CKwMaterialCompareDlg compare(m->At(m->IndexOfShownRow(0)).material,
                                      m->At(m->IndexOfShownRow(1)).material, host->Units());
        compare.Create();
        compare.show();
        shoot(&compare, "tmpl356-compare-materials.png");
        compare.hide();
    }
    browser.hide();

    // The S-N curve of the sample steel, on a copy: the gallery changes no material.
    for (const CKwMaterial* m : host->Model()->m_materials) {
        if (m->m_snCurve.IsEmpty())
            continue;
        CKwMaterial copy = *m;
        CKwSNCurveDialog sn(&copy, host->Units(), host->View());
        sn.Create();
        sn.show();
        shoot(&sn, "tmpl7450-s-n-curve.png");
        sn.hide();
        break;
    }
}
