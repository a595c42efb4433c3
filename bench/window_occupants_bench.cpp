// The crowded room of occupants_bench.cpp with the main window on top, its
// Console panel in view: the people list's view, the transcript and the
// status labels follow every name, and the event loop runs after each frame
// as it would between two reads. "stall_ms" is the longest frame with the
// events it left behind.
#include <QApplication>
#include <QPushButton>

#include "crowded_room.h"
#include "panel/frm_main.h"

namespace {

struct Window : crowd::Room {
    FrmMain window{bot};
    Window() {
        window.show();
        window.chkTab[9]->click();  // the Console panel
        QApplication::processEvents();
        afterFrame = [] { QApplication::processEvents(); };
    }
};

void CrowdedRoomInTheWindow(benchmark::State& state) {
    crowd::Run<Window>(state);
}
BENCHMARK(CrowdedRoomInTheWindow)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
