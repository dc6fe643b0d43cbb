// The modal dialog between opening a track and the tunnel job.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QScrollBar>

#include "dialogs/ControlTable.h"
#include "job/TunnelSettings.h"

namespace boreforge {

class frmTunnelSettings : public QDialog {
  public:
    explicit frmTunnelSettings(QWidget* owner);

    // What the controls say.
    TunnelChoices Choices() const;

  protected:
    // Return and Escape do nothing by themselves.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void MakeTunnelFrame();
    void MakeModificationFrame();
    void MakeButtons();
    void Make();
    void ChooseTunnelColor();
    void ShowTunnelColor();

    PackedColor color_ = TunnelChoices().Color;
    QLabel* lblTColor_ = nullptr;
    QComboBox* cmbDetail_ = nullptr;
    QScrollBar* hsTrans_ = nullptr;
    QScrollBar* hsDimPercent_ = nullptr;
    QCheckBox* chkDoubleSided_ = nullptr;
    QCheckBox* chkRemTunnels_ = nullptr;
    QCheckBox* chkDimColors_ = nullptr;
    QCheckBox* chkPlaceIt_ = nullptr;
    TabOrder tabOrder_;
};

}  // namespace boreforge
