#!/usr/bin/env python3
"""Meshes the bracket, solves it and writes the results as two data sets.

Needs gmsh and ccx (Debian: gmsh, calculix-ccx). Building Ormelle, its tests and its gallery don't need this: they read
what is stored in data/bracket_tetrahedra and data/bracket_mixed.

    tools/cases/bracket/bracket.py [FOLDER]    FOLDER gets what the programs write; build/bracket if not given

The cells are solved with nodes in the middle of their straight edges, and the results kept at their corners.
"""

import array
import json
import math
import os
import pathlib
import shutil
import subprocess
import sys
from collections import Counter, namedtuple

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[2]

FORCE = 1500.0  # newtons, by which the pin pulls
PULL = (0.0, 0.35, math.sqrt(1 - 0.35**2))  # upwards and a little to one side
FILM = 0.05  # heat that goes to the air, in mW/(mm2 K), which is at 20 degrees Celsius

# A kind of cell, by its number of nodes. The edges are in the order of the solver's nodes in their middle, the facets in
# that of its face numbers, and `corners` is what the solver gets as corners: it knows no pyramids, so that these become
# hexahedra whose upper nodes are one.
Kind = namedtuple("Kind", "name gmsh solver corners edges facets")
KINDS = {
    4: Kind("tetrahedron", 4, "C3D10", (0, 1, 2, 3), ((0, 1), (1, 2), (2, 0), (0, 3), (1, 3), (2, 3)),
            ((0, 1, 2), (0, 3, 1), (1, 3, 2), (2, 3, 0))),
    5: Kind("pyramid", 7, "C3D20", (0, 1, 2, 3, 4, 4, 4, 4),
            ((0, 1), (1, 2), (2, 3), (3, 0), (4, 4), (4, 4), (4, 4), (4, 4), (0, 4), (1, 4), (2, 4), (3, 4)),
            ((0, 1, 2, 3), (), (0, 4, 1), (1, 4, 2), (2, 4, 3), (3, 4, 0))),
    6: Kind("wedge", 6, "C3D15", (0, 1, 2, 3, 4, 5),
            ((0, 1), (1, 2), (2, 0), (3, 4), (4, 5), (5, 3), (0, 3), (1, 4), (2, 5)),
            ((0, 1, 2), (3, 5, 4), (0, 3, 4, 1), (1, 4, 5, 2), (2, 5, 3, 0))),
    8: Kind("hexahedron", 5, "C3D20", (0, 1, 2, 3, 4, 5, 6, 7),
            ((0, 1), (1, 2), (2, 3), (3, 0), (4, 5), (5, 6), (6, 7), (7, 4), (0, 4), (1, 5), (2, 6), (3, 7)),
            ((0, 1, 2, 3), (4, 7, 6, 5), (0, 4, 5, 1), (1, 5, 6, 2), (2, 6, 7, 3), (3, 7, 4, 0))),
}
# At each corner of a cell three edges, as a right-handed system when the cell has a positive volume there.
CORNER_EDGES = {
    4: ((0, 1, 2, 3), (1, 2, 0, 3), (2, 0, 1, 3), (3, 0, 2, 1)),
    5: ((0, 1, 3, 4), (1, 2, 0, 4), (2, 3, 1, 4), (3, 0, 2, 4)),
    6: ((0, 1, 2, 3), (1, 2, 0, 4), (2, 0, 1, 5), (3, 5, 4, 0), (4, 3, 5, 1), (5, 4, 3, 2)),
    8: ((0, 1, 3, 4), (1, 2, 0, 5), (2, 3, 1, 6), (3, 0, 2, 7), (4, 7, 5, 0), (5, 4, 6, 1), (6, 5, 7, 2), (7, 6, 4, 3)),
}

Mesh = namedtuple("Mesh", "points cells facets")


def minus(a, b):
    return tuple(p - q for p, q in zip(a, b))


def dot(a, b):
    return sum(p * q for p, q in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


# ---- Mesh -----------------------------------------------------------------------------------------------------------


def make_mesh(folder, is_mixed):
    """Runs gmsh. Facets are kept by the number of the surface's group in bracket.geo, as tuples of nodes."""
    file = folder / "bracket.msh"
    subprocess.run(["gmsh", "-3", HERE / "bracket.geo", "-setnumber", "mixed", str(int(is_mixed)), "-o", file],
                   check=True, stdout=(folder / "gmsh.log").open("w"))
    lines = file.read_text().split("\n")
    start = lines.index("$Nodes") + 2
    nodes = {}
    for line in lines[start:start + int(lines[start - 1])]:
        number, *coordinates = line.split()
        nodes[int(number)] = tuple(float(c) for c in coordinates)
    start = lines.index("$Elements") + 2
    sizes = {kind.gmsh: size for size, kind in KINDS.items()}
    cells, facets, numbers = [], {}, {}
    for line in lines[start:start + int(lines[start - 1])]:
        _, gmsh_type, num_tags, group, *rest = (int(word) for word in line.split())
        element = rest[num_tags - 1:]
        if gmsh_type in sizes:
            cells.append(tuple(numbers.setdefault(node, len(numbers)) for node in element))
        elif gmsh_type in (2, 3):
            facets.setdefault(group, []).append(element)
    # Kinds in blocks, which compress and read better; the nodes are numbered as the cells meet them.
    cells.sort(key=len)
    facets = {group: [tuple(numbers[node] for node in facet) for facet in some] for group, some in facets.items()}
    points = [nodes[node] for node in numbers]
    return Mesh([tuple(array.array("f", point)) for point in points], cells, facets)


def corner_volumes(points, cell):
    for corner, *ends in CORNER_EDGES[len(cell)]:
        u, v, w = (minus(points[cell[end]], points[cell[corner]]) for end in ends)
        yield dot(cross(u, v), w) / math.sqrt(dot(u, u) * dot(v, v) * dot(w, w))


def volume(points, cell):
    """By the tetrahedra between the cell's first node and its facets, four-sided ones being split both ways."""
    total = 0.0
    for facet in KINDS[len(cell)].facets:
        corners = [minus(points[cell[node]], points[cell[0]]) for node in facet]
        for a, b, c in ((0, 1, 2), (0, 2, 3), (0, 1, 3), (1, 2, 3)) if len(facet) == 4 else ((0, 1, 2),) * bool(facet):
            part = abs(dot(cross(corners[a], corners[b]), corners[c])) / 6
            total += part / 2 if len(facet) == 4 else part
    return total


def part_volume():
    """The volume of the bracket itself, with the numbers of bracket.geo."""
    base = 68 * 60 - 2 * 8**2 * (1 - math.pi / 4) - 2 * math.pi * 5.5**2
    lug = 40 * 60 + math.pi * 30**2 / 2 - math.pi * 12**2
    corner = (22**2 - math.pi * 12**2 / 4) * 60
    return base * 10 + lug * 10 + corner


# ---- Solution -------------------------------------------------------------------------------------------------------


def in_lines(numbers, per_line=12):
    return "".join(", ".join(map(str, numbers[i:i + per_line])) + ",\n" for i in range(0, len(numbers), per_line))


def write_decks(mesh, folder):
    """Writes mesh.inp and loads.inp, whose numbers start at 1."""
    points = list(mesh.points)
    middles = {}

    def middle(a, b):
        if a == b:
            return a
        key = (min(a, b), max(a, b))
        if key not in middles:
            middles[key] = len(points)
            points.append(tuple((p + q) / 2 for p, q in zip(points[a], points[b])))
        return middles[key]

    elements, owners = {}, {}
    for number, cell in enumerate(mesh.cells, 1):
        kind = KINDS[len(cell)]
        nodes = [cell[corner] for corner in kind.corners] + [middle(cell[a], cell[b]) for a, b in kind.edges]
        elements.setdefault(kind.solver, []).append([number] + [node + 1 for node in nodes])
        for face, facet in enumerate(kind.facets, 1):
            owners.setdefault(frozenset(cell[node] for node in facet), (number, face))

    def nodes_of(group):
        found = set()
        for facet in mesh.facets[group]:
            found.update(facet)
            for i, node in enumerate(facet):
                found.add(middles[tuple(sorted((node, facet[i - 1])))])
        return sorted(node + 1 for node in found)

    with (folder / "mesh.inp").open("w") as out:
        out.write("*NODE, NSET=NALL\n")
        out.writelines("%d, %.9g, %.9g, %.9g\n" % (number, *point) for number, point in enumerate(points, 1))
        for solver, some in elements.items():
            out.write("*ELEMENT, TYPE=%s, ELSET=ALL\n" % solver)
            out.writelines(map(in_lines, some))
        out.write("*NSET, NSET=CORNERS, GENERATE\n1, %d\n" % len(mesh.points))
        for name, group in (("BOLTS", 11), ("PIN", 12), ("UNDERSIDE", 13)):
            out.write("*NSET, NSET=%s\n%s" % (name, in_lines(nodes_of(group))))

    # The pin presses against one half of its hole, by the cosine of the angle to its pull.
    middle_x = sum(mesh.points[node][0] for facet in mesh.facets[12] for node in facet)
    middle_x /= sum(map(len, mesh.facets[12]))
    pressures, resultant = [], 0.0
    for facet in mesh.facets[12]:
        corners = [mesh.points[node] for node in facet]
        u = minus(corners[2], corners[0])
        v = minus(corners[3 % len(corners)], corners[1]) if len(corners) == 4 else minus(corners[1], corners[0])
        normal = cross(u, v)
        area = math.sqrt(dot(normal, normal)) / 2
        centre = tuple(sum(c) / len(corners) for c in zip(*corners))
        outwards = minus(centre, (middle_x, 30.0, 62.0))
        cosine = abs(dot(normal, PULL)) / (2 * area) if dot(outwards, PULL) > 0 else 0.0
        pressures.append(cosine)
        resultant += cosine**2 * area
    with (folder / "loads.inp").open("w") as out:
        out.write("*DLOAD\n")
        for facet, cosine in zip(mesh.facets[12], pressures):
            if cosine > 0:
                out.write("%d, P%d, %.9g\n" % (*owners[frozenset(facet)], FORCE * cosine / resultant))
        out.write("*FILM\n")
        for facet in mesh.facets[14]:
            out.write("%d, F%d, 20., %g\n" % (*owners[frozenset(facet)], FILM))


def von_mises(s):
    xx, yy, zz, xy, a, b = s
    return math.sqrt(0.5 * ((xx - yy)**2 + (yy - zz)**2 + (zz - xx)**2) + 3 * (xy * xy + a * a + b * b))


def read_nodes(file):
    """The results at nodes: name to {node: values}; columns of 12 characters behind the node's number."""
    results, current = {}, None
    for line in file.read_text().split("\n"):
        if line.startswith(" -4"):
            current = results.setdefault(line.split()[1], {})
        elif line.startswith(" -1") and current is not None:
            current[int(line[3:13])] = [float(line[i:i + 12]) for i in range(13, len(line.rstrip()), 12)]
        elif line.startswith(" -3"):
            current = None
    return results


def read_elements(file):
    """The stresses at the points within each element, the total volume, and the total force on the bolts."""
    stresses, volume_sum, force, block = {}, None, None, None
    for line in file.read_text().split("\n"):
        words = line.split()
        if line.startswith(" stresses"):
            block = "stress"
        elif line.startswith(" total volume"):
            block = "volume"
        elif line.startswith(" total force"):
            block = "force"
        elif line.startswith(" "):
            try:
                numbers = [float(word) for word in words]
            except ValueError:
                continue
            if block == "stress" and len(numbers) == 8:
                stresses.setdefault(int(numbers[0]), []).append(numbers[2:])
            elif block == "volume" and len(numbers) == 1:
                volume_sum = numbers[0]
            elif block == "force" and len(numbers) == 3:
                force = numbers
    return stresses, volume_sum, force


# ---- Data set -------------------------------------------------------------------------------------------------------


def write_raw(folder, name, code, numbers):
    numbers = array.array(code, numbers)
    assert numbers.itemsize == 4
    if sys.byteorder == "big":
        numbers.byteswap()
    (folder / name).write_bytes(numbers.tobytes())


def write_set(name, title, mesh, fields, facts):
    folder = ROOT / "data" / name
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)

    def describe(file, rows, **more):
        rows = [tuple(array.array("f", row)) for row in rows]
        write_raw(folder, file, "f", [number for row in rows for number in row])
        low, high = [min(c) for c in zip(*rows)], [max(c) for c in zip(*rows)]
        return {"file": file, "type": "float32", "byte_order": "little", "components": len(low), "count": len(rows),
                **more, "min": low if len(low) > 1 else low[0], "max": high if len(high) > 1 else high[0]}

    about = {"name": name, "title": title, "kind": "indexed_mesh_3d",
             "points": describe("points.raw", mesh.points, unit="mm"), "cells": []}
    for size, count in sorted(Counter(map(len, mesh.cells)).items()):
        file = KINDS[size].name + "_cells.raw"
        write_raw(folder, file, "i", [node for cell in mesh.cells if len(cell) == size for node in cell])
        about["cells"].append({"type": KINDS[size].name, "file": file, "index_type": "int32", "byte_order": "little",
                               "index_base": 0, "count": count, "nodes_per_cell": size})
    about["fields"] = []
    for field, rows, more in fields:
        about["fields"].append({"name": field, **describe(field + ".raw", rows, **more)})
    about.update(facts)
    (folder / (name + ".json")).write_text(json.dumps(about, indent=1) + "\n")
    return sum(file.stat().st_size for file in folder.iterdir())


def main():
    work = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "bracket").resolve()
    version = subprocess.run(["ccx", "-v"], capture_output=True, text=True).stdout.split()[-1]
    gmsh = subprocess.run(["gmsh", "--version"], capture_output=True, text=True)
    gmsh = (gmsh.stdout + gmsh.stderr).split()[-1]
    for name, is_mixed, kind in (("bracket_tetrahedra", False, "tetrahedra"),
                                 ("bracket_mixed", True, "hexahedra, wedges, pyramids and tetrahedra")):
        folder = work / name
        folder.mkdir(parents=True, exist_ok=True)
        mesh = make_mesh(folder, is_mixed)
        worst = min(min(corner_volumes(mesh.points, cell)) for cell in mesh.cells)
        if worst <= 0.02:
            sys.exit("%s: a cell is flat or turned inside out (%g)" % (name, worst))
        total = math.fsum(volume(mesh.points, cell) for cell in mesh.cells)

        write_decks(mesh, folder)
        shutil.copy(HERE / "bracket.inp", folder)
        subprocess.run(["ccx", "-i", "bracket"], cwd=folder, check=True, stdout=(folder / "ccx.log").open("w"),
                       env={**os.environ, "OMP_NUM_THREADS": "2"})
        at_nodes = read_nodes(folder / "bracket.frd")
        stresses, solved_volume, force = read_elements(folder / "bracket.dat")
        corners = range(1, len(mesh.points) + 1)
        displacement = [at_nodes["DISP"][node][:3] for node in corners]
        temperature = [at_nodes["NDTEMP"][node] for node in corners]
        stress = [[von_mises(at_nodes["STRESS"][node])] for node in corners]
        in_cells = [[sum(map(von_mises, stresses[cell])) / len(stresses[cell])]
                    for cell in range(1, len(mesh.cells) + 1)]

        print("%s: %d nodes, cells %s, smallest corner %.3f" %
              (name, len(mesh.points), dict(Counter(map(len, mesh.cells))), worst))
        print("  volume %.2f, the solver's %.2f, the part's %.2f mm3" % (total, solved_volume, part_volume()))
        print("  force on the bolts %s, the pin's %s N" % (force, [FORCE * p for p in PULL]))
        print("  stress up to %.1f MPa, displacement up to %.4f mm" %
              (max(s for s, in stress), max(math.sqrt(dot(d, d)) for d in displacement)))
        size = write_set(
            name, "Steel bracket pulled by a hot pin, meshed with " + kind + ": displacement, stress and temperature",
            mesh,
            [("displacement", displacement, {"association": "node", "unit": "mm"}),
             ("stress", stress, {"association": "node", "unit": "MPa", "description": "equivalent stress (von Mises)"}),
             ("temperature", temperature, {"association": "node", "unit": "degree Celsius"}),
             ("cell_stress", in_cells, {"association": "cell", "unit": "MPa", "description":
              "equivalent stress, mean of the integration points of each cell, in the order of the cells above"})],
            {"volume": total, "volume_of_part": part_volume(),
             "note": "cells turn as those of Ormelle do, with a positive volume in the order of their nodes; solved "
                     "with nodes in the middle of the edges, and kept at the corners",
             "source": "Ormelle, tools/cases/bracket: gmsh %s and CalculiX %s (Debian 12)" % (gmsh, version),
             "licence": "BSD-3-Clause, as Ormelle itself"})
        print("  %d bytes" % size)


if __name__ == "__main__":
    main()
