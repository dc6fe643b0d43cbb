#include "dialogs/frmTunnelSettings.h"

#include <QApplication>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QProxyStyle>
#include <QPushButton>

#include <functional>

#include "dialogs/MessageBoxes.h"
#include "dialogs/mColorDialog.h"
#include "dialogs/mFileDialog.h"
#include "job/mMain.h"

namespace boreforge {

namespace {

constexpr int kWindowWidth = 6615, kWindowHeight = 4035;  // twips, inside the frame

constexpr ControlPlace kFrame5{"Frame5", 60, 60, 6495, 1755, 9};
constexpr ControlPlace kFrame1{"Frame1", 120, 240, 1695, 1035, 10};
constexpr ControlPlace kTColor{"lblTColor", 120, 240, 1455, 675, 11};
constexpr ControlPlace kFrame4{"Frame4", 1860, 240, 2115, 1035, 12};
constexpr ControlPlace kDetail{"cmbDetail", 120, 300, 1875, 315, 13};
constexpr ControlPlace kFrame3{"Frame3", 4020, 240, 2355, 1035, 14};
constexpr ControlPlace kTransBar{"hsTrans", 120, 240, 2115, 255, 15};
constexpr ControlPlace kTransText{"lblTrans", 120, 660, 2115, 195, 16};
constexpr ControlPlace kDoubleSided{"chkDoubleSided", 120, 1440, 1815, 195, 17};
constexpr ControlPlace kLabel2{"Label2", 2220, 1440, 4155, 195, 18};
constexpr ControlPlace kFrame2{"Frame2", 60, 1920, 6495, 1635, 0};
constexpr ControlPlace kRemTunnels{"chkRemTunnels", 120, 300, 2475, 195, 1};
constexpr ControlPlace kDimColors{"chkDimColors", 120, 600, 2475, 195, 2};
constexpr ControlPlace kDimBar{"hsDimPercent", 420, 840, 2115, 255, 7};
constexpr ControlPlace kDimText{"lblDimPercent", 2520, 840, 555, 255, 8};
constexpr ControlPlace kPlaceIt{"chkPlaceIt", 120, 1320, 2955, 195, 5};
constexpr ControlPlace kLabel1{"Label1", 3300, 240, 3075, 915, 6};
constexpr ControlPlace kStart{"btnStart", 4200, 3660, 1095, 315, 3};
constexpr ControlPlace kCancel{"btnCancel", 5400, 3660, 1095, 315, 4};

constexpr char kNote[] =
    "Note: Any track modification will require that the track be re-saved.  It is highly recommended that "
    "you "
    "have a back-up copy of the track file.";

// A label that is clicked like a button.
class Swatch : public QLabel {
  public:
    Swatch(QWidget* parent, std::function<void()> clicked) : QLabel(parent), clicked_(std::move(clicked)) {}

  protected:
    void mousePressEvent(QMouseEvent*) override {}
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) clicked_();
    }

  private:
    std::function<void()> clicked_;
};

QGroupBox* MakeFrame(QWidget* parent, const ControlPlace& place, const char* caption) {
    auto* const frame = new QGroupBox(caption, parent);
    Place(frame, place);
    FitText(frame, caption, frame->size() - QSize(24, 0));
    return frame;
}

QLabel* MakeLabel(QWidget* parent, const ControlPlace& place, const char* text, bool wrap = false) {
    auto* const label = new QLabel(text, parent);
    Place(label, place);
    label->setWordWrap(wrap);
    FitText(label, text, label->size() + QSize(0, wrap ? 0 : 8), wrap);
    return label;
}

// The platform's dark shadow of a button, a dark grey on a light desktop. On a dark one it would
// vanish, and the softened text colour stands in.
void SetNoteColor(QLabel* label) {
    QPalette palette = label->palette();
    QColor color = palette.color(QPalette::WindowText);
    if (palette.color(QPalette::Window).lightness() < 128) {
        color = color.darker(125);
    } else {
        std::int32_t red = 0, green = 0, blue = 0;
        SplitColor(SystemColor(21), red, green, blue);
        color = QColor(red, green, blue);
    }
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

// The check box's place is lower than the box that most styles draw.
class LowCheckBoxStyle : public QProxyStyle {
  public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const bool box = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight;
        return box ? 12 : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

QCheckBox* MakeCheck(QWidget* parent, const ControlPlace& place, const char* text, bool checked,
                     TabOrder& order) {
    auto* const check = new QCheckBox(text, parent);
    Place(check, place);
    auto* const style = new LowCheckBoxStyle;
    style->setParent(check);
    check->setStyle(style);
    check->setChecked(checked);
    check->setAccessibleName(text);
    constexpr int kBox = 22;  // logical pixels of the box and the gap beside it
    FitText(check, text, check->size() - QSize(kBox, -8));
    order.emplace_back(place.tabIndex, check);
    return check;
}

// A scroll bar for a percentage, with a label that shows its value also while the thumb is dragged.
QScrollBar* MakePercentBar(QWidget* parent, const ControlPlace& place, int value, QLabel* readOut,
                           const char* name, TabOrder& order) {
    auto* const bar = new QScrollBar(Qt::Horizontal, parent);
    Place(bar, place);
    bar->setRange(0, 100);
    bar->setSingleStep(1);
    bar->setPageStep(5);
    bar->setFocusPolicy(Qt::StrongFocus);
    bar->setAccessibleName(name);
    const auto show = [readOut](int percent) { readOut->setText(QString::number(percent) + '%'); };
    QObject::connect(bar, &QScrollBar::valueChanged, readOut, show);
    bar->setValue(value);
    show(value);
    readOut->setAlignment(Qt::AlignCenter);
    order.emplace_back(place.tabIndex, bar);
    return bar;
}

}  // namespace

frmTunnelSettings::frmTunnelSettings(QWidget* owner)
    : QDialog(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
    setObjectName("frmTunnelSettings");
    setWindowTitle("3DS Tunnel Settings...");
    // The caption stands in the frame's upper line, so that the frame keeps its place under every style.
    setStyleSheet(
        "QGroupBox { border: 1px solid palette(mid); border-radius: 3px; margin-top: 7px; }"
        "QGroupBox::title { subcontrol-origin: margin; left: 7px; padding: 0 2px; }");
    setFixedSize(PixelsOf(kWindowWidth), PixelsOf(kWindowHeight));
    MakeTunnelFrame();
    MakeModificationFrame();
    MakeButtons();
    ApplyTabOrder(tabOrder_);
    chkRemTunnels_->setFocus();  // the first in that order; a list with the focus would change by a stray key
    if (owner) move(owner->frameGeometry().center() - rect().center());
}

void frmTunnelSettings::MakeTunnelFrame() {
    const TunnelChoices defaults;
    QGroupBox* const settings = MakeFrame(this, kFrame5, "Tunnel Settings");

    QGroupBox* const color = MakeFrame(settings, kFrame1, "Tunnel Color");
    lblTColor_ = new Swatch(color, [this] { Guarded([this] { ChooseTunnelColor(); }); });
    Place(lblTColor_, kTColor);
    lblTColor_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lblTColor_->setAutoFillBackground(true);
    lblTColor_->setCursor(Qt::PointingHandCursor);
    lblTColor_->setAccessibleName("Tunnel Color");
    ShowTunnelColor();

    QGroupBox* const detail = MakeFrame(settings, kFrame4, "Tunnel Curvature Detail");
    cmbDetail_ = new QComboBox(detail);
    Place(cmbDetail_, kDetail);
    for (const DetailChoice& choice : kDetails)
        cmbDetail_->addItem(QString::fromLatin1(choice.name.data()));
    cmbDetail_->setCurrentIndex(defaults.DetailItem);
    cmbDetail_->setAccessibleName("Tunnel Curvature Detail");
    tabOrder_.emplace_back(kDetail.tabIndex, cmbDetail_);

    QGroupBox* const transparency = MakeFrame(settings, kFrame3, "Tunnel Transparency");
    QLabel* const lblTrans = MakeLabel(transparency, kTransText, "");
    hsTrans_ = MakePercentBar(transparency, kTransBar, defaults.Transparency, lblTrans, "Tunnel Transparency",
                              tabOrder_);

    chkDoubleSided_ =
        MakeCheck(settings, kDoubleSided, "Double-Sided Faces", defaults.DoubleSided, tabOrder_);
    SetNoteColor(MakeLabel(settings, kLabel2, "It's an option, but it's not recommended!"));
}

void frmTunnelSettings::MakeModificationFrame() {
    const TunnelChoices defaults;
    QGroupBox* const changes = MakeFrame(this, kFrame2, "Track Modifications");
    chkRemTunnels_ =
        MakeCheck(changes, kRemTunnels, "Remove Tunnel Flags", defaults.RemoveTunnels, tabOrder_);
    chkDimColors_ =
        MakeCheck(changes, kDimColors, "Dim Tunneled Segment Colors", defaults.DimColors, tabOrder_);
    QLabel* const lblDimPercent = MakeLabel(changes, kDimText, "");
    lblDimPercent->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    hsDimPercent_ =
        MakePercentBar(changes, kDimBar, defaults.DimPercent, lblDimPercent, "Dim Percentage", tabOrder_);
    chkPlaceIt_ =
        MakeCheck(changes, kPlaceIt, "Place the Object in My Track for Me", defaults.PlaceObject, tabOrder_);
    QLabel* const note = MakeLabel(changes, kLabel1, kNote, true);
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    SetNoteColor(note);
}

void frmTunnelSettings::MakeButtons() {
    const auto make = [this](const ControlPlace& place, const char* text) {
        auto* const button = new QPushButton(text, this);
        Place(button, place);
        button->setAutoDefault(false);
        button->setAccessibleName(text);
        tabOrder_.emplace_back(place.tabIndex, button);
        return button;
    };
    connect(make(kStart, "Make"), &QPushButton::clicked, this, [this] { Guarded([this] { Make(); }); });
    connect(make(kCancel, "Cancel"), &QPushButton::clicked, this, [this] { reject(); });
}

TunnelChoices frmTunnelSettings::Choices() const {
    TunnelChoices choices;
    choices.Color = color_;
    choices.Transparency = static_cast<std::int16_t>(hsTrans_->value());
    choices.DetailItem = cmbDetail_->currentIndex();
    choices.DoubleSided = chkDoubleSided_->isChecked();
    choices.RemoveTunnels = chkRemTunnels_->isChecked();
    choices.DimColors = chkDimColors_->isChecked();
    choices.DimPercent = hsDimPercent_->value();
    choices.PlaceObject = chkPlaceIt_->isChecked();
    return choices;
}

void frmTunnelSettings::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Escape) QDialog::keyPressEvent(event);
}

void frmTunnelSettings::Make() {
    FileDialogArguments arguments;
    arguments.Filter = "3DStudioMax Files (*.3ds)|*.3ds";
    arguments.InitialFolder = ProgramFolder("objects");
    arguments.DialogTitle = "Save Tunnel as 3DS Object...";
    arguments.DefaultExtension = "3ds";
    arguments.Owner = this;
    if (!ShowSaveFileDialog(arguments, true)) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Guarded([&] { RunTunnelJob(DeriveJobSettings(Choices(), arguments.FileName.toStdString())); });
    QApplication::restoreOverrideCursor();
    accept();
}

void frmTunnelSettings::ChooseTunnelColor() {
    PackedColor chosen = color_;
    if (!ShowColorDialog(chosen, true, true, false, this)) return;
    color_ = chosen;
    ShowTunnelColor();
}

void frmTunnelSettings::ShowTunnelColor() {
    std::int32_t red = 0, green = 0, blue = 0;
    SplitColor(color_, red, green, blue);
    QPalette palette = lblTColor_->palette();
    palette.setColor(QPalette::Window, QColor(red, green, blue));
    lblTColor_->setPalette(palette);
}

}  // namespace boreforge
