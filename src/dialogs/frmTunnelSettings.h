// The modal dialog between opening a track and the tunnel job.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>

#include <vector>

#include "dialogs/ControlTable.h"
#include "dialogs/SettingsControls.h"
#include "job/TunnelSettings.h"

namespace boreforge {

class frmTunnelSettings : public QDialog {
  public:
    explicit frmTunnelSettings(QWidget* owner);

    // The settings that the controls show.
    TunnelChoices Choices() const;

  protected:
    // Return and Escape do nothing by themselves.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QGroupBox* MakeFrame(QWidget* parent, const ControlGeometry& geometry, const char* caption);
    QLabel* MakeLabel(QWidget* parent, const ControlGeometry& geometry, const char* widestText);
    QCheckBox* MakeCheck(QWidget* parent, const ControlGeometry& geometry, const char* text, bool checked);
    // A bar with a label that shows its value, also while the thumb is dragged.
    QScrollBar* MakePercentBar(QWidget* parent, const ControlGeometry& geometry, int value, QLabel* readOut,
                               const char* name);
    void MakeTunnelFrame();
    void MakeModificationFrame();
    void MakeButtons();
    void Make();
    void ChooseTunnelColor();

    PackedColor color_ = TunnelChoices().color;
    Swatch* lblTColor_ = nullptr;
    QComboBox* cmbDetail_ = nullptr;
    QScrollBar* hsTrans_ = nullptr;
    QScrollBar* hsDimPercent_ = nullptr;
    QCheckBox* chkDoubleSided_ = nullptr;
    QCheckBox* chkRemTunnels_ = nullptr;
    QCheckBox* chkDimColors_ = nullptr;
    QCheckBox* chkPlaceIt_ = nullptr;
    TabOrder tabOrder_;
    std::vector<TextRoom> texts_;
};

}  // namespace boreforge
