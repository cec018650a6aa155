#include "app/windowlist.h"

#include "app/startup.h"

namespace app
{

void listWindows(VorloMain& program, WindowMenu& menu)
{
    struct Row {
        QWidget& window;
        const char *name, *caption;
    };
    const std::initializer_list<Row> groups[]{
        {{program.MainWindow, "mnuWindowMain", "&Main Window"}},
        {{program.GraphWindow1, "mnuWindowDecayPlot", "&Decay Plot"},
         {program.GraphWindow2, "mnuWindowAnalysisPlot", "&Analysis Plot"},
         {program.OutputTable1, "mnuWindowDecayTable", "Decay &Table"},
         {program.OutputTable2, "mnuWindowAnalysisTable", "A&nalysis Table"}},
        {{program.DecayAnalyzer, "mnuWindowDecayAnalyzer", "Decay&CurveAnalyzer"},
         {program.SVAnalyzer, "mnuWindowSVAnalyzer", "Stern&VolmerAnalyzer"},
         {program.startValues, "mnuWindowStartValues", "&Start Values"},
         {program.fitDetails, "mnuWindowFitDetails", "&Fit Details"},
         {program.modelComparison, "mnuWindowComparison", "C&ompare Models"},
         {program.lifetimesWindow, "mnuWindowLifetimes", "Intensities and &Lifetimes"}},
        {{program.importWindow, "mnuWindowImport", "&Import Table"},
         {program.preparationWindow, "mnuWindowPreparation", "&Prepare Intensities"},
         {program.exportWindow, "mnuWindowExport", "&Export"}},
        {{program.SettingWindow, "mnuWindowSettings", "O&utput Settings"},
         {program.helpViewer, "mnuWindowHelp", "Vorlo &Help"},
         {program.aboutBox, "mnuWindowAbout", "A&bout Vorlo"}},
    };
    for (const auto& group : groups) {
        if (group.begin() != groups[0].begin())
            menu.addSeparator();
        for (const Row& row : group)
            menu.add(row.window, row.name, WindowMenu::tr(row.caption));
    }
}

} // namespace app
