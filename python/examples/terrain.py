"""A map of real terrain: colours by height in shaded relief, contours with their heights, and a legend."""
import numpy, ormelle
from pivy import coin

height = numpy.fromfile("data/jacksboro_fault_dem/elevation.raw", "<f4").reshape(344, 403).T  # [x, y], in metres
grid = ormelle.PbRegularCartesianGrid2D(403, 344, 0, 0, 30, 31.8, z=height / 250)  # in km, heights 4 times too large
grid.set_values("height", height)
colours = ormelle.PbNonLinearDataMapping2([236, 400, 600, 800, 1076], ["#4d806b", "#91b575", "#e0db9e", "#d9a878", "#ede0d4"])
text = dict(format=ormelle.PbNumericDisplayFormat(ormelle.PbNumericDisplayFormat.INTEGER_FORMAT),
            miscTextAttr=ormelle.PbMiscTextAttr("DejaVu Sans"), isovaluesList=ormelle.PbIsovaluesList(range(300, 1100, 100)))
surface = ormelle.PoMeshFilled(mesh=grid, dataMapping=colours, valuesIndex=0, coloringType="COLOR_MAPPING", creaseAngle=1.5)
lines = ormelle.PoMeshContouring(mesh=grid, valuesIndex=0, majorPeriod=1, annotIsVisible=True, annotIsContourClip=True,
                                 annotFontSize=0.018, domain=ormelle.PbDomain(0, 0, 0, 32, 32, 32), **text)
legend = ormelle.PoLinearValueLegend(dataMapping=colours, start=(31, 3), end=(35, 29), titleString="metres",
                                     titleVisibility="VISIBILITY_ON", titlePosition="POS_TOP", **text)
ink = coin.SoBaseColor()
ink.rgb = (0.2, 0.1, 0.05)
scene = ormelle.group(surface, ink, lines, legend)
ormelle.show(scene, (1200, 900), camera=ormelle.Camera(orthographic=True), samples=8).save("terrain.png")
