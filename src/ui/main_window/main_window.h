#pragma once

#include "ui/kit/ordinary_window.h"
#include "ui/main_window/main_window_model.h"

namespace velmora {

/// The window with the history, the meetings and the settings.
class MainWindow : public OrdinaryWindow {
    Q_OBJECT

public:
    struct Neighbours {
        UiEngine& engine;
        MainLoop& loop;
        MainWindowModel::Neighbours model;
    };

    explicit MainWindow(const Neighbours& neighbours);
    ~MainWindow() override;

protected:
    void refresh() override { m_model.refresh(); }

private:
    MainWindowModel m_model;
};

} // namespace velmora
