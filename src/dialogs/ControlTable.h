// Positions and sizes of windows and controls, in twips as in the windows' design: 1440 to the inch, 15 to
// the logical pixel. Qt scales logical pixels on high-density screens.
#pragma once

#include <QFont>
#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

#include <utility>
#include <vector>

namespace boreforge {

constexpr int PixelsOf(int twips) { return twips / 15; }

struct ControlGeometry {
    const char* name;              // the object name
    int left, top, width, height;  // twips, relative to the parent
    int tabIndex;
};

// The widget's font in the size for which the controls were laid out.
QFont WindowFont(const QWidget& widget);

// Sets a control's name, geometry and font.
void SetGeometry(QWidget* control, const ControlGeometry& geometry);

// Controls with their tab indices; the focus moves through them in ascending order.
using TabOrder = std::vector<std::pair<int, QWidget*>>;

void ApplyTabOrder(TabOrder order);

// The widest text that a control shows and the room for it, in logical pixels. A text of one line may be
// taller than its room.
struct TextRoom {
    QWidget* control = nullptr;
    QString text;
    QSize room;
    bool wraps = false;
};

// Condenses the fonts of all these controls by the same factor until each text fits: the controls' sizes are
// fixed, but fonts differ in width. The factor stays at 60 percent or more, to be readable; text that doesn't
// fit even then is cut off.
void FitTexts(const std::vector<TextRoom>& texts);

// The upper left corner of a window's frame that is centred in `area` but kept inside `screen`. If it is
// larger than the screen, its upper left corner stays visible. All in logical pixels.
QPoint CentredCorner(QSize inside, const QMargins& frame, const QRect& area, const QRect& screen);

// Centres a window that isn't shown yet in `area`, on `screen`. Its frame may be unknown until the window is
// on the screen: `frame` is a guess, and the first paint corrects the position.
void CentreFrame(QWidget* window, const QRect& area, const QRect& screen, const QMargins& frame = {});

}  // namespace boreforge
