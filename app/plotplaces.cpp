#include "app/plotplaces.h"

#include "app/startup.h"
#include "app/windowplaces.h"
#include "ui/twips.h"

#include <QScreen>

namespace app
{

void placePlotsAndTables(VorloMain& program)
{
    program.GraphWindow1.SetTitle("Decay Plot");
    program.GraphWindow2.SetTitle("Analysis Plot");
    program.OutputTable1.SetTitle("Decay Table");
    program.OutputTable2.SetTitle("Analysis Table");
    const auto place = [](plot::OutputWindow& window, WindowCorner corner) {
        window.SetPosition(static_cast<std::int16_t>(corner.top), static_cast<std::int16_t>(corner.left));
    };
    const QRect screen = program.MainWindow.screen()->availableGeometry();
    const TableCorners tables =
        tableCorners({ui::toTwips(screen.x() + screen.width()), ui::toTwips(screen.y() + screen.height())},
                     {ui::toTwips(program.OutputTable1.width()), ui::toTwips(program.OutputTable1.height())});
    place(program.GraphWindow1, kDecayPlotCorner);
    place(program.GraphWindow2, kAnalysisPlotCorner);
    place(program.OutputTable1, tables.decay);
    place(program.OutputTable2, tables.analysis);
}

} // namespace app
