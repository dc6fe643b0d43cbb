#include "dialogs/frmTunnelSettings.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProxyStyle>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include "dialogs/MessageBoxes.h"
#include "dialogs/QtColor.h"
#include "dialogs/mColorDialog.h"
#include "dialogs/mFileDialog.h"
#include "job/mMain.h"

namespace boreforge {

namespace {

constexpr int kWindowWidth = 6615, kWindowHeight = 4035;  // twips, inside the frame

constexpr ControlGeometry kFrame5{"Frame5", 60, 60, 6495, 1755, 9};
constexpr ControlGeometry kFrame1{"Frame1", 120, 240, 1695, 1035, 10};
constexpr ControlGeometry kTColor{"lblTColor", 120, 240, 1455, 675, 11};
constexpr ControlGeometry kFrame4{"Frame4", 1860, 240, 2115, 1035, 12};
constexpr ControlGeometry kDetail{"cmbDetail", 120, 300, 1875, 315, 13};
constexpr ControlGeometry kFrame3{"Frame3", 4020, 240, 2355, 1035, 14};
constexpr ControlGeometry kTransBar{"hsTrans", 120, 240, 2115, 255, 15};
constexpr ControlGeometry kTransText{"lblTrans", 120, 660, 2115, 195, 16};
constexpr ControlGeometry kDoubleSided{"chkDoubleSided", 120, 1440, 1815, 195, 17};
constexpr ControlGeometry kLabel2{"Label2", 2220, 1440, 4155, 195, 18};
constexpr ControlGeometry kFrame2{"Frame2", 60, 1920, 6495, 1635, 0};
constexpr ControlGeometry kRemTunnels{"chkRemTunnels", 120, 300, 2475, 195, 1};
constexpr ControlGeometry kDimColors{"chkDimColors", 120, 600, 2475, 195, 2};
constexpr ControlGeometry kDimBar{"hsDimPercent", 420, 840, 2115, 255, 7};
constexpr ControlGeometry kDimText{"lblDimPercent", 2520, 840, 555, 255, 8};
constexpr ControlGeometry kPlaceIt{"chkPlaceIt", 120, 1320, 2955, 195, 5};
constexpr ControlGeometry kLabel1{"Label1", 3300, 240, 3075, 915, 6};
constexpr ControlGeometry kStart{"btnStart", 4200, 3660, 1095, 315, 3};
constexpr ControlGeometry kCancel{"btnCancel", 5400, 3660, 1095, 315, 4};

constexpr char kNote[] =
    "Note: Any track modification will require that the track be re-saved.  "
    "It is highly recommended that you have a back-up copy of the track file.";

// On a light desktop, notes have the dark grey of a button's shadow, as in the platform's own dialogs. That
// would be unreadable on a dark desktop, so there they get a softer text colour.
void SetNoteColor(QLabel* label) {
    constexpr int kSofter = 125;  // percent
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, IsDark(palette)
                                               ? palette.color(QPalette::WindowText).darker(kSofter)
                                               : ToQColor(SystemColor(kButtonDarkShadow)));
    label->setPalette(palette);
}

// The layout leaves check boxes less height than most styles need to draw the box.
constexpr int kCheckBoxPixels = 12;

class SmallCheckBoxStyle : public QProxyStyle {
  public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const bool box = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight;
        return box ? kCheckBoxPixels : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

}  // namespace

frmTunnelSettings::frmTunnelSettings(QWidget* owner)
    : QDialog(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
    setObjectName("frmTunnelSettings");
    setWindowTitle("3DS Tunnel Settings...");
    // The caption is on the frame's top line, so that the frame has the same position in every style.
    setStyleSheet(
        "QGroupBox { border: 1px solid palette(mid); border-radius: 3px; margin-top: 7px; }"
        "QGroupBox::title { subcontrol-origin: margin; left: 7px; padding: 0 2px; }");
    setFixedSize(PixelsOf(kWindowWidth), PixelsOf(kWindowHeight));
    MakeTunnelFrame();
    MakeModificationFrame();
    MakeButtons();
    FitTexts(texts_);
    ApplyTabOrder(tabOrder_);
    chkRemTunnels_->setFocus();  // first in the tab order; a focused list would change at a stray key
    if (owner) {
        const QMargins frame = owner->windowHandle() ? owner->windowHandle()->frameMargins() : QMargins();
        CentreFrame(this, owner->frameGeometry(), owner->screen()->availableGeometry(), frame);
    }
}

QGroupBox* frmTunnelSettings::MakeFrame(QWidget* parent, const ControlGeometry& geometry,
                                        const char* caption) {
    constexpr int kCorners = 24;  // logical pixels beside the caption
    auto* const frame = new QGroupBox(caption, parent);
    SetGeometry(frame, geometry);
    frame->setAccessibleName(caption);
    texts_.push_back({frame, caption, frame->size() - QSize(kCorners, 0)});
    return frame;
}

QLabel* frmTunnelSettings::MakeLabel(QWidget* parent, const ControlGeometry& geometry, const char* text) {
    auto* const label = new QLabel(text, parent);
    SetGeometry(label, geometry);
    texts_.push_back({label, text, label->size()});
    return label;
}

QCheckBox* frmTunnelSettings::MakeCheck(QWidget* parent, const ControlGeometry& geometry, const char* text,
                                        bool checked) {
    constexpr int kGap = 10;  // logical pixels beside the box
    auto* const check = new QCheckBox(text, parent);
    SetGeometry(check, geometry);
    auto* const style = new SmallCheckBoxStyle;
    style->setParent(check);
    check->setStyle(style);
    check->setChecked(checked);
    check->setAccessibleName(text);
    texts_.push_back({check, text, check->size() - QSize(kCheckBoxPixels + kGap, 0)});
    tabOrder_.emplace_back(geometry.tabIndex, check);
    return check;
}

QScrollBar* frmTunnelSettings::MakePercentBar(QWidget* parent, const ControlGeometry& geometry, int value,
                                              QLabel* readOut, const char* name) {
    auto* const bar = new PercentBar(parent);
    SetGeometry(bar, geometry);
    bar->setAccessibleName(name);
    const auto show = [readOut](int percent) { readOut->setText(QString::number(percent) + '%'); };
    connect(bar, &QScrollBar::valueChanged, readOut, show);
    bar->setValue(value);
    show(value);
    readOut->setAlignment(Qt::AlignCenter);
    tabOrder_.emplace_back(geometry.tabIndex, bar);
    return bar;
}

void frmTunnelSettings::MakeTunnelFrame() {
    const TunnelChoices defaults;
    QGroupBox* const settings = MakeFrame(this, kFrame5, "Tunnel Settings");

    QGroupBox* const color = MakeFrame(settings, kFrame1, "Tunnel Color");
    lblTColor_ = new Swatch(color);
    SetGeometry(lblTColor_, kTColor);
    connect(lblTColor_, &QAbstractButton::clicked, this,
            [this] { ReportingOutOfMemory([this] { ChooseTunnelColor(); }); });
    lblTColor_->setAccessibleName("Tunnel Color");
    tabOrder_.emplace_back(kTColor.tabIndex, lblTColor_);
    lblTColor_->ShowColor(ToQColor(color_));

    QGroupBox* const detail = MakeFrame(settings, kFrame4, "Tunnel Curvature Detail");
    cmbDetail_ = new QComboBox(detail);
    SetGeometry(cmbDetail_, kDetail);
    for (const DetailChoice& choice : kDetails)
        cmbDetail_->addItem(QString::fromLatin1(choice.name.data()));
    cmbDetail_->setCurrentIndex(defaults.detailItem);
    cmbDetail_->setAccessibleName("Tunnel Curvature Detail");
    // On Linux, Qt reports the selected item as the accessible name.
    cmbDetail_->setAccessibleDescription("Tunnel Curvature Detail");
    constexpr int kArrow = 30;  // logical pixels of the arrow and the frame
    texts_.push_back({cmbDetail_, "Extreme", cmbDetail_->size() - QSize(kArrow, 0)});
    tabOrder_.emplace_back(kDetail.tabIndex, cmbDetail_);

    QGroupBox* const transparency = MakeFrame(settings, kFrame3, "Tunnel Transparency");
    QLabel* const lblTrans = MakeLabel(transparency, kTransText, "100%");
    hsTrans_ =
        MakePercentBar(transparency, kTransBar, defaults.transparency, lblTrans, "Tunnel Transparency");

    chkDoubleSided_ = MakeCheck(settings, kDoubleSided, "Double-Sided Faces", defaults.doubleSided);
    SetNoteColor(MakeLabel(settings, kLabel2, "It's an option, but it's not recommended!"));
}

void frmTunnelSettings::MakeModificationFrame() {
    const TunnelChoices defaults;
    QGroupBox* const changes = MakeFrame(this, kFrame2, "Track Modifications");
    chkRemTunnels_ = MakeCheck(changes, kRemTunnels, "Remove Tunnel Flags", defaults.removeTunnels);
    chkDimColors_ = MakeCheck(changes, kDimColors, "Dim Tunneled Segment Colors", defaults.dimColors);
    QLabel* const lblDimPercent = MakeLabel(changes, kDimText, "100%");
    lblDimPercent->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    hsDimPercent_ = MakePercentBar(changes, kDimBar, defaults.dimPercent, lblDimPercent, "Dim Percentage");
    chkPlaceIt_ = MakeCheck(changes, kPlaceIt, "Place the Object in My Track for Me", defaults.placeObject);
    QLabel* const note = MakeLabel(changes, kLabel1, kNote);
    note->setWordWrap(true);
    texts_.back().wraps = true;
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    SetNoteColor(note);
}

void frmTunnelSettings::MakeButtons() {
    const auto make = [this](const ControlGeometry& geometry, const char* text) {
        auto* const button = new QPushButton(text, this);
        SetGeometry(button, geometry);
        button->setAutoDefault(false);
        button->setAccessibleName(text);
        texts_.push_back({button, text, button->size()});
        tabOrder_.emplace_back(geometry.tabIndex, button);
        return button;
    };
    connect(make(kStart, "Make"), &QPushButton::clicked, this,
            [this] { ReportingOutOfMemory([this] { Make(); }); });
    connect(make(kCancel, "Cancel"), &QPushButton::clicked, this, [this] { reject(); });
}

TunnelChoices frmTunnelSettings::Choices() const {
    TunnelChoices choices;
    choices.color = color_;
    choices.transparency = static_cast<std::int16_t>(hsTrans_->value());
    choices.detailItem = cmbDetail_->currentIndex();
    choices.doubleSided = chkDoubleSided_->isChecked();
    choices.removeTunnels = chkRemTunnels_->isChecked();
    choices.dimColors = chkDimColors_->isChecked();
    choices.dimPercent = hsDimPercent_->value();
    choices.placeObject = chkPlaceIt_->isChecked();
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
    arguments.OverwritePrompt = true;
    if (!ShowSaveFileDialog(arguments)) return;
    const Outcome made = [&] {
        const WaitCursor wait;
        return RunTunnelJob(DeriveJobSettings(Choices(), arguments.FileName.toStdString()));
    }();
    if (!made) ShowFailure(made.Why());
    accept();
}

void frmTunnelSettings::ChooseTunnelColor() {
    ColorDialogArguments arguments;
    arguments.Color = color_;
    arguments.AnyColor = true;
    arguments.FullOpen = true;
    arguments.Owner = this;
    if (!ShowColorDialog(arguments)) return;
    color_ = arguments.Color;
    lblTColor_->ShowColor(ToQColor(color_));
}

}  // namespace boreforge
