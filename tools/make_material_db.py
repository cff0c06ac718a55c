#!/usr/bin/env python3
"""Writes the shipped material database (host/data/Materials) from the table below.

Values are typical room-temperature figures from public handbooks and data sheets (ASM
handbooks and desk editions, producers' published data, textbook composite data). Run it
after changing the table; the written files are committed.
"""
import os
from xml.sax.saxutils import quoteattr, escape

OUT = os.path.join(os.path.dirname(__file__), '..', 'host', 'data', 'Materials')

# name, category, type, properties {key: (value, unit)}, extras {key: (value, unit)}, options
def iso(E, nu, rho, uts=None, ys=None, alpha=None, k=None, c=None, G=None, uc=None):
    p = {'EX': (E, 'GPa'), 'NUXY': (nu, ''), 'DENS': (rho, 'kg/m3')}
    if G: p['GXY'] = (G, 'GPa')
    if uts: p['SIGXT'] = (uts, 'MPa')
    if uc: p['SIGXC'] = (uc, 'MPa')
    if ys: p['SIGXY'] = (ys, 'MPa')
    if alpha: p['ALPX'] = (alpha, '/K')
    if k: p['KX'] = (k, 'W/m-K')
    if c: p['C'] = (c, 'J/kg-K')
    p['REFT'] = (20, 'C')
    return p

M = [
 ('AISI 1010 Steel, hot rolled', 'Carbon steels', 'Isotropic', iso(200, 0.29, 7870, 365, 305, 12.2e-6, 51.9, 448, 80)),
 ('AISI 1020 Steel, cold rolled', 'Carbon steels', 'Isotropic', iso(205, 0.29, 7870, 420, 350, 11.7e-6, 51.9, 486, 80)),
 ('AISI 1045 Steel, cold drawn', 'Carbon steels', 'Isotropic', iso(205, 0.29, 7850, 625, 530, 11.2e-6, 49.8, 486, 80)),
 ('AISI 4140 Steel, annealed', 'Alloy steels', 'Isotropic', iso(205, 0.29, 7850, 655, 415, 12.2e-6, 42.6, 473, 80)),
 ('AISI 4340 Steel, normalized', 'Alloy steels', 'Isotropic', iso(205, 0.29, 7850, 1110, 710, 12.3e-6, 44.5, 475, 80)),
 ('ASTM A36 Steel', 'Structural steels', 'Isotropic', iso(200, 0.26, 7850, 400, 250, 11.7e-6, 50, 486, 79.3)),
 ('S355 Structural Steel', 'Structural steels', 'Isotropic', iso(210, 0.30, 7850, 470, 355, 12.0e-6, 50, 460, 81)),
 ('AISI 304 Stainless Steel, annealed', 'Stainless steels', 'Isotropic', iso(193, 0.29, 8000, 505, 215, 17.3e-6, 16.2, 500, 77)),
 ('AISI 316 Stainless Steel, annealed', 'Stainless steels', 'Isotropic', iso(193, 0.30, 8000, 515, 205, 15.9e-6, 16.3, 500, 74)),
 ('AISI 316L Stainless Steel, annealed', 'Stainless steels', 'Isotropic', iso(193, 0.30, 8000, 485, 170, 16.0e-6, 16.3, 500, 74)),
 ('AISI 410 Stainless Steel, annealed', 'Stainless steels', 'Isotropic', iso(200, 0.28, 7800, 480, 275, 9.9e-6, 24.9, 460, 78)),
 ('17-4 PH Stainless Steel, H1025', 'Stainless steels', 'Isotropic', iso(197, 0.27, 7780, 1070, 1000, 10.8e-6, 18.3, 460, 77)),
 ('Duplex 2205 Stainless Steel', 'Stainless steels', 'Isotropic', iso(200, 0.30, 7800, 620, 450, 13.0e-6, 19, 500, 77)),
 ('Aluminium 1100-O', 'Aluminium alloys', 'Isotropic', iso(69, 0.33, 2710, 90, 34, 23.6e-6, 222, 904, 26)),
 ('Aluminium 2024-T3', 'Aluminium alloys', 'Isotropic', iso(73.1, 0.33, 2780, 483, 345, 23.2e-6, 121, 875, 28)),
 ('Aluminium 5052-H32', 'Aluminium alloys', 'Isotropic', iso(70.3, 0.33, 2680, 228, 193, 23.8e-6, 138, 880, 25.9)),
 ('Aluminium 6061-T6', 'Aluminium alloys', 'Isotropic', iso(68.9, 0.33, 2700, 310, 276, 23.6e-6, 167, 896, 26)),
 ('Aluminium 6063-T5', 'Aluminium alloys', 'Isotropic', iso(68.9, 0.33, 2700, 186, 145, 23.4e-6, 209, 900, 25.8)),
 ('Aluminium 7075-T6', 'Aluminium alloys', 'Isotropic', iso(71.7, 0.33, 2810, 572, 503, 23.6e-6, 130, 960, 26.9)),
 ('Aluminium A356.0-T6, sand cast', 'Aluminium alloys', 'Isotropic', iso(72.4, 0.33, 2670, 234, 165, 21.4e-6, 151, 963)),
 ('Titanium Ti-6Al-4V, annealed', 'Titanium alloys', 'Isotropic', iso(113.8, 0.342, 4430, 950, 880, 8.6e-6, 6.7, 526, 44)),
 ('Titanium Grade 2, commercially pure', 'Titanium alloys', 'Isotropic', iso(105, 0.37, 4510, 345, 275, 8.6e-6, 16.4, 523, 45)),
 ('Copper C11000, annealed', 'Copper alloys', 'Isotropic', iso(115, 0.31, 8890, 220, 69, 17.0e-6, 388, 385, 44)),
 ('Brass C26000, annealed', 'Copper alloys', 'Isotropic', iso(110, 0.375, 8530, 315, 75, 20.0e-6, 120, 375, 40)),
 ('Brass C36000, half hard', 'Copper alloys', 'Isotropic', iso(97, 0.31, 8500, 385, 310, 20.5e-6, 115, 380, 37)),
 ('Phosphor Bronze C51000, annealed', 'Copper alloys', 'Isotropic', iso(110, 0.34, 8860, 325, 130, 17.8e-6, 69.2, 380, 41)),
 ('Beryllium Copper C17200, TH04', 'Copper alloys', 'Isotropic', iso(128, 0.30, 8250, 1310, 1170, 17.8e-6, 105, 420, 50)),
 ('Grey Cast Iron, ASTM A48 Class 30', 'Cast irons', 'Isotropic', iso(100, 0.26, 7200, 214, None, 10.5e-6, 46, 490, 40, uc=752)),
 ('Ductile Iron 65-45-12', 'Cast irons', 'Isotropic', iso(169, 0.29, 7100, 448, 310, 11.0e-6, 36, 506, 64)),
 ('Malleable Iron, ferritic 32510', 'Cast irons', 'Isotropic', iso(172, 0.26, 7270, 345, 224, 12.0e-6, 51, 510, 68)),
 ('ABS', 'Plastics', 'Isotropic', iso(2.0, 0.35, 1040, 40, None, 90e-6, 0.17, 1400)),
 ('Polycarbonate', 'Plastics', 'Isotropic', iso(2.38, 0.37, 1200, 65, 62, 68e-6, 0.20, 1200)),
 ('Nylon 6/6, dry as moulded', 'Plastics', 'Isotropic', iso(2.8, 0.39, 1140, 80, None, 80e-6, 0.25, 1670)),
 ('PTFE', 'Plastics', 'Isotropic', iso(0.5, 0.46, 2170, 25, None, 135e-6, 0.25, 1000)),
 ('HDPE', 'Plastics', 'Isotropic', iso(1.07, 0.42, 952, 26, None, 120e-6, 0.46, 1900)),
 ('PEEK, unfilled', 'Plastics', 'Isotropic', iso(3.6, 0.40, 1300, 100, None, 47e-6, 0.25, 1340)),
 ('Acrylic (PMMA)', 'Plastics', 'Isotropic', iso(3.0, 0.37, 1190, 72, None, 70e-6, 0.19, 1470)),
 ('E-Glass/Epoxy, unidirectional', 'Composites', 'Orthotropic2D',
  {'E1': (39, 'GPa'), 'E2': (8.6, 'GPa'), 'NUXY': (0.28, ''), 'G12': (3.8, 'GPa'),
   'G1Z': (3.8, 'GPa'), 'G2Z': (3.0, 'GPa'), 'DENS': (2100, 'kg/m3'), 'XT': (1080, 'MPa'),
   'XC': (620, 'MPa'), 'YT': (39, 'MPa'), 'YC': (128, 'MPa'), 'S': (89, 'MPa'),
   'ALP1': (7.0e-6, '/K'), 'ALP2': (21e-6, '/K'), 'REFT': (20, 'C')}),
 ('Carbon/Epoxy T300/5208, unidirectional', 'Composites', 'Orthotropic3D',
  {'E1': (181, 'GPa'), 'E2': (10.3, 'GPa'), 'E3': (10.3, 'GPa'), 'NUXY': (0.28, ''),
   'NUXZ': (0.28, ''), 'NUYZ': (0.49, ''), 'G12': (7.17, 'GPa'), 'G1Z': (7.17, 'GPa'),
   'G2Z': (3.46, 'GPa'), 'DENS': (1600, 'kg/m3'), 'XT': (1500, 'MPa'), 'XC': (1500, 'MPa'),
   'YT': (40, 'MPa'), 'YC': (246, 'MPa'), 'ZT': (40, 'MPa'), 'ZC': (246, 'MPa'),
   'S12': (68, 'MPa'), 'S13': (68, 'MPa'), 'S23': (40, 'MPa'), 'ALP1': (0.02e-6, '/K'),
   'ALP2': (22.5e-6, '/K'), 'ALP3': (22.5e-6, '/K'), 'REFT': (20, 'C')}),
 ('Natural Rubber, 50 Shore A', 'Elastomers', 'Hyperelastic',
  {'DENS': (930, 'kg/m3'), 'D1': (1.0e-9, 'm2/N')},
  {'A10': (0.28, 'MPa'), 'A01': (0.07, 'MPa')}, {'hyperelasticModel': 'MooneyRivlin'}),
 ('Nitinol, superelastic', 'Shape memory alloys', 'Nitinol',
  {'EX': (75, 'GPa'), 'NUXY': (0.33, ''), 'DENS': (6450, 'kg/m3'), 'ALPX': (11e-6, '/K'),
   'KX': (18, 'W/m-K'), 'C': (320, 'J/kg-K')},
  {'EM': (28, 'GPa'), 'SAS': (520, 'MPa'), 'FAS': (600, 'MPa'), 'SSA': (300, 'MPa'),
   'FSA': (200, 'MPa'), 'EPSL': (0.05, '')}),
 ('Concrete C30/37', 'Concrete', 'Concrete',
  {'EX': (33, 'GPa'), 'NUXY': (0.2, ''), 'DENS': (2400, 'kg/m3'), 'ALPX': (10e-6, '/K')},
  {'FPC': (30, 'MPa')}),
]

def material_xml(m, indent='  '):
    name, cat, typ, props = m[:4]
    extras = m[4] if len(m) > 4 else {}
    opts = m[5] if len(m) > 5 else {}
    out = [f'{indent}<material name={quoteattr(name)} type="{typ}" category={quoteattr(cat)}>']
    out.append(f'{indent}  <description>Typical room-temperature values from public handbooks.</description>')
    for key, (v, u) in list(props.items()) + list(extras.items()):
        out.append(f'{indent}  <property key="{key}" value="{v:.6g}" unit="{u}"/>')
    if opts:
        attrs = ' '.join(f'{k}="{v}"' for k, v in opts.items())
        out.append(f'{indent}  <options {attrs}/>')
    out.append(f'{indent}</material>')
    return '\n'.join(out)

def file_name(name):
    return ''.join(ch if ch.isalnum() or ch in ' -.,()' else '_' for ch in name)

def main():
    os.makedirs(OUT, exist_ok=True)
    for m in M:
        with open(os.path.join(OUT, file_name(m[0]) + '.svrmat'), 'w', encoding='utf-8') as f:
            f.write('<?xml version="1.0" encoding="UTF-8"?>\n<svrmat version="1">\n')
            f.write(material_xml(m) + '\n</svrmat>\n')
    with open(os.path.join(OUT, 'Engineering materials.kwimat'), 'w', encoding='utf-8') as f:
        f.write('<?xml version="1.0" encoding="UTF-8"?>\n<kwimat version="1">\n')
        f.write('\n'.join(material_xml(m) for m in M) + '\n</kwimat>\n')
    # A CAD material library in its public structure: SI values, no units, grouped by class.
    si = {'GPa': 1e9, 'MPa': 1e6, '': 1, 'kg/m3': 1, '/K': 1, 'W/m-K': 1, 'J/kg-K': 1}
    third = {'EX', 'NUXY', 'GXY', 'DENS', 'SIGXT', 'SIGXC', 'ALPX', 'KX', 'C'}
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', '<materials>']
    by_cat = {}
    for m in M:
        if m[2] == 'Isotropic' and m[1] in ('Carbon steels', 'Stainless steels', 'Aluminium alloys'):
            by_cat.setdefault(m[1], []).append(m)
    for cat, ms in by_cat.items():
        lines.append(f'  <classification name={quoteattr(cat)}>')
        for m in ms:
            lines.append(f'    <material name={quoteattr(m[0])} description="Typical values">')
            lines.append('      <physicalproperties>')
            for key, (v, u) in m[3].items():
                out_key = 'SIGYLD' if key == 'SIGXY' else key
                if key in third or key == 'SIGXY':
                    lines.append(f'        <{out_key} displayname="{out_key}" value="{v * si[u]:.6g}"/>')
            lines.append('      </physicalproperties>')
            lines.append('    </material>')
        lines.append('  </classification>')
    lines.append('</materials>')
    with open(os.path.join(OUT, 'CAD library metals.sldmat'), 'w', encoding='utf-8') as f:
        f.write('\n'.join(lines) + '\n')

if __name__ == '__main__':
    main()
