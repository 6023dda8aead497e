// uiProgressBar: shows an integer value within a range as the filled part of its sprite: the left part
// of a horizontal bar, the lower part of a vertical one, or (vertical and inverted) the part above the
// fill. The shown value can follow the value smoothly. delta() and step() may be called from any
// thread (a loader reporting progress): they and the frame's update share the bar's own lock, always
// taken after the subsystem lock.
//
// Description keys (besides those of uiVisualWidget):
//   min_range = int        lower end of the range (default 0)
//   max_range = int        upper end of the range (default 100)
//   value = float          the shown value; the first update moves it toward the target value
//   step = int             amount added by step() (default 1)
//   rate = unsigned        smoothing time constant in milliseconds (default 200; 0: no smoothing)
//   smooth = BOOLEAN       the shown value approaches the value gradually
//   vertical = BOOLEAN     fill along the height, from the bottom up
//   invert = BOOLEAN       vertical bars: draw the part above the fill
#pragma once
#include "uivisualwidget.h"

class uiCriticalSection;

class UI_API uiProgressBar : public uiVisualWidget {
    UI_DECLARE_WIDGET(uiProgressBar)

public:
    uiProgressBar();
    ~uiProgressBar() override;

    // The values of an empty and a full bar.
    void setRange(int min, int max);
    // step() adds the step size to the value, delta(d) adds d; both stay within the range.
    void setStep(int s) { stepSize = s; }
    void step();
    void delta(int d);
    bool isFull() const; // whether the shown fill has reached the maximum

    // The value is kept within the range; `immediate` shows it at once, without smoothing.
    virtual void setValue(int v, bool immediate);

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _update(int x, int y) override;
    void _render(int x, int y) override;

private:
    int _clampToRange(long long v) const;
    float _fillFraction() const;
    void _approachValue();

public:
    // Fields, in declared order. value and displayValue are guarded by lock.
    int minRange = 0;
    int maxRange = 100;
    int value = 0;
    float displayValue = 0.0f;
    int stepSize = 1;
    unsigned int rate = 200;
    uiCriticalSection* lock = nullptr;
    bool smooth = false;
    bool vertical = false;
    bool invert = false;
};
