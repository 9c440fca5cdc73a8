// A bracket of steel, in millimetres: a base plate with two bolt holes, an upright lug with a hole for a pin, and a
// corner with a fillet between them. The bracket stands on z = 0, and its back is x = 0.
//
//   gmsh -3 bracket.geo -setnumber mixed 0     tetrahedra
//   gmsh -3 bracket.geo -setnumber mixed 1     hexahedra in the base, wedges in the lug, tetrahedra in the corner, and
//                                              pyramids where these meet the sides of the others
DefineConstant[ mixed = 0 ];

thickness = 10;
fillet = 12;
length = 90;           // of the base, along x
width = 60;            // along y
pin_height = 62;       // of the pin's axis above z = 0
pin_radius = 12;
lug_radius = width / 2;
bolt_x = 66;
bolt_y = 15;           // from either side
bolt_radius = 5.5;
base_radius = 8;       // of the base's outer corners
corner = thickness + fillet;

layers = 3;            // of cells across a plate, in the mixed mesh
coarse = mixed ? 5.0 : 6.0;
fine = mixed ? 3.2 : 3.0;

Mesh.MshFileVersion = 2.2;
Mesh.Algorithm3D = 1;
Mesh.Optimize = 1;

// A hole in four quarters, and its curve loop; all get numbers from p on. Its plane is that of y and of (vx, vz).
Macro RoundHole
  Point(p) = {x, y, z};
  Point(p + 1) = {x - radius * vx, y, z - radius * vz, fine};
  Point(p + 2) = {x, y - radius, z, fine};
  Point(p + 3) = {x + radius * vx, y, z + radius * vz, fine};
  Point(p + 4) = {x, y + radius, z, fine};
  Circle(p + 1) = {p + 1, p, p + 2};
  Circle(p + 2) = {p + 2, p, p + 3};
  Circle(p + 3) = {p + 3, p, p + 4};
  Circle(p + 4) = {p + 4, p, p + 1};
  Curve Loop(p) = {p + 1 : p + 4};
Return

// ---- The underside of the base --------------------------------------------------------------------------------------

Point(1) = {corner, 0, 0, fine};
Point(2) = {length - base_radius, 0, 0, coarse};
Point(3) = {length - base_radius, base_radius, 0, coarse};
Point(4) = {length, base_radius, 0, coarse};
Point(5) = {length, width - base_radius, 0, coarse};
Point(6) = {length - base_radius, width - base_radius, 0, coarse};
Point(7) = {length - base_radius, width, 0, coarse};
Point(8) = {corner, width, 0, fine};
Line(1) = {1, 2};
Circle(2) = {2, 3, 4};
Line(3) = {4, 5};
Circle(4) = {5, 6, 7};
Line(5) = {7, 8};
Line(6) = {8, 1};
Curve Loop(1) = {1 : 6};

vx = 1; vz = 0;
x = bolt_x; z = 0; radius = bolt_radius;
p = 20; y = bolt_y;
Call RoundHole;
p = 30; y = width - bolt_y;
Call RoundHole;
Plane Surface(1) = {1, 20, 30};

// ---- The back of the lug --------------------------------------------------------------------------------------------

Point(41) = {0, 0, corner, fine};
Point(42) = {0, width, corner, fine};
Point(43) = {0, width, pin_height, coarse};
Point(44) = {0, width / 2, pin_height + lug_radius, coarse};
Point(45) = {0, 0, pin_height, coarse};
vx = 0; vz = 1;
x = 0; y = width / 2; z = pin_height; radius = pin_radius;
p = 50;
Call RoundHole;
Line(41) = {41, 42};
Line(42) = {42, 43};
Circle(43) = {43, 50, 44};
Circle(44) = {44, 50, 45};
Line(45) = {45, 41};
Curve Loop(41) = {41 : 45};
Plane Surface(41) = {41, 50};

// ---- The two plates: [0] is the surface opposite, [1] the volume, then come the sides over the curves, in order -------

If(mixed)
  Recombine Surface{1};
  base[] = Extrude {0, 0, thickness} { Surface{1}; Layers{layers}; Recombine; };
  lug[] = Extrude {thickness, 0, 0} { Surface{41}; Layers{layers}; Recombine; };
Else
  base[] = Extrude {0, 0, thickness} { Surface{1}; };
  lug[] = Extrude {thickness, 0, 0} { Surface{41}; };
EndIf
base_side = base[2 + 5];
lug_side = lug[2];

// ---- The corner between a side of the base and one of the lug ---------------------------------------------------------

// The points and curves where it meets the plates' inner faces, and the plates' ends: one of either plate at y = 0 and
// one at y = width.
e = 0.01;
a[] = Point In BoundingBox {corner - e, -e, thickness - e, corner + e, e, thickness + e};
b[] = Point In BoundingBox {corner - e, width - e, thickness - e, corner + e, width + e, thickness + e};
c[] = Point In BoundingBox {thickness - e, -e, corner - e, thickness + e, e, corner + e};
d[] = Point In BoundingBox {thickness - e, width - e, corner - e, thickness + e, width + e, corner + e};
ab[] = Curve In BoundingBox {corner - e, -e, thickness - e, corner + e, width + e, thickness + e};
cd[] = Curve In BoundingBox {thickness - e, -e, corner - e, thickness + e, width + e, corner + e};
base_end0[] = Curve In BoundingBox {corner - e, -e, -e, corner + e, e, thickness + e};
base_end1[] = Curve In BoundingBox {corner - e, width - e, -e, corner + e, width + e, thickness + e};
lug_end0[] = Curve In BoundingBox {-e, -e, corner - e, thickness + e, e, corner + e};
lug_end1[] = Curve In BoundingBox {-e, width - e, corner - e, thickness + e, width + e, corner + e};

Point(201) = {0, 0, 0, coarse};
Point(202) = {0, width, 0, coarse};
Point(203) = {corner, 0, corner};
Point(204) = {corner, width, corner};
Line(201) = {201, 202};
Line(202) = {201, 1};
Line(203) = {202, 8};
Line(204) = {201, 41};
Line(205) = {202, 42};
Circle(206) = {a[0], 203, c[0]};
Circle(207) = {b[0], 204, d[0]};
Curve Loop(201) = {201, 203, 6, -202};
Plane Surface(201) = {201};  // the underside
Curve Loop(202) = {201, 205, -41, -204};
Plane Surface(202) = {202};  // the back
Curve Loop(203) = {202, base_end0[0], 206, -lug_end0[0], -204};
Plane Surface(203) = {203};
Curve Loop(204) = {203, base_end1[0], 207, -lug_end1[0], -205};
Plane Surface(204) = {204};
Curve Loop(205) = {206, cd[0], -207, ab[0]};
Surface(205) = {205};        // the fillet
Surface Loop(201) = {201 : 205, base_side, lug_side};
Volume(201) = {201};

// ---- What the loads and the results refer to --------------------------------------------------------------------------

Physical Volume("base", 1) = {base[1]};
Physical Volume("lug", 2) = {lug[1]};
Physical Volume("corner", 3) = {201};
Physical Surface("bolts", 11) = {base[{8 : 15}]};
Physical Surface("pin", 12) = {lug[{7 : 10}]};
Physical Surface("underside", 13) = {1, 201};
// All that the air cools.
Physical Surface("air", 14) = {base[0], base[{2 : 6}], lug[0], 41, lug[{3 : 6}], 202 : 205};
