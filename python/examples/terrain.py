"""A map of real terrain: colours by height in shaded relief, contours with their heights, and a legend."""
import numpy, ormelle

height = numpy.fromfile("data/jacksboro_fault_dem/elevation.raw", "<f4").reshape(344, 403).T  # [x, y], in metres
grid = ormelle.PbRegularCartesianGrid2D(403, 344, 0, 0, 30, 31.8, z=height / 250)  # in km, heights 4 times too large
grid.set_values("height", height)
colours = ormelle.PbNonLinearDataMapping2([236, 400, 600, 800, 1076], ["#4d806b", "#91b575", "#e0db9e", "#d9a878", "#ede0d4"])
levels = ormelle.PbIsovaluesList(range(300, 1100, 100))
text = dict(format=ormelle.PbNumericDisplayFormat("INTEGER_FORMAT"), miscTextAttr=ormelle.PbMiscTextAttr("DejaVu Sans"))
surface = ormelle.PoMeshFilled(grid, colours, creaseAngle=1.5)
lines = ormelle.PoMeshContouring(grid, levels, majorPeriod=1, annotIsVisible=True, annotIsContourClip=True, annotFontSize=0.018,
                                 domain=ormelle.PbDomain(0, 0, 0, 32, 32, 32), **text)
legend = ormelle.PoLinearValueLegend(colours, levels, start=(31, 3), end=(35, 29), titleString="metres",
                                     titleVisibility="VISIBILITY_ON", titlePosition="POS_TOP", **text)
scene = ormelle.group(surface, ormelle.SoBaseColor(rgb="#331a0d"), lines, legend)
ormelle.save(scene, "terrain.png", camera=ormelle.Camera(orthographic=True), samples=8)
