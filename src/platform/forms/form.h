// The base of every window and dialog.
//
// A form object outlives its window: Load builds the window with all its
// controls (buildControls) and fires Form_Load, Unload fires Form_Unload and
// destroys the window. The object's own variables keep their values in between;
// its pointers to controls are valid only while it is loaded, and buildControls
// sets all of them anew. A slot may unload its own form: the window is deleted
// once the event is over.
//
// Left, Top, Width and Height are whole twips of the frame. What code has set
// is kept (7404, though that is 493.6 pixels) until the user moves or resizes.
//
// Form_Load, Form_Resize, Form_Unload and Form_QueryUnload are events: an error
// that one lets out goes to the untrapped handler, what buildControls throws to
// the caller. Loading and unloading keep the user's input back (InputHold).
#pragma once
#include "platform/forms/buttons.h"

#include <QPointer>

#include <memory>

class QEventLoop;
class QMenuBar;

namespace tolvek {

class FormWindow;

enum class BorderStyle { None, FixedDialog, Sizable };
enum class WindowStates { Normal = 0, Minimized = 1, Maximized = 2 };
enum class UnloadMode { ControlMenu, Code }; // the close box, or an Unload

class Form {
public:
    explicit Form(TextView name, BorderStyle border = BorderStyle::Sizable);
    virtual ~Form(); // destroys a window that still stands, without events
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    void Load();                           // nothing if loaded
    void Show();                           // loads, shows, doesn't wait
    void ShowModal(Form* owner = nullptr); // loads, shows, returns once it is hidden or unloaded
    void Hide();
    void Unload();  // nothing if not loaded
    void Refresh(); // paints at once
    bool Loaded() const { return window_ != nullptr; }
    bool Visible() const;

    const Text& Name() const { return name_; }
    const Text& Caption() const { return caption_; }
    void setCaption(TextView caption);
    Colour BackColor() const { return backColor_; }
    void setBackColor(Colour colour);

    float Left() const { return left_; }
    float Top() const { return top_; }
    float Width() const { return width_; }
    float Height() const { return height_; }
    void setLeft(float twips);
    void setTop(float twips);
    void setWidth(float twips); // fires Form_Resize while loaded, if it changes
    void setHeight(float twips);
    void CentreOnScreen();
    void CentreOver(const Form& owner);

    int WindowState() const;        // 0 normal, 1 minimised, 2 maximised
    void setWindowState(int state); // others: error 380

    // Enter and Escape press these; without them the keys do nothing. To be set
    // in buildControls; a disabled button isn't pressed.
    void setDefaultButton(CommandButton* button) { defaultButton_ = button; }
    void setCancelButton(CommandButton* button) { cancelButton_ = button; }
    // Off: the window can't be closed by its user.
    void setControlBox(bool controlBox) { controlBox_ = controlBox; }
    // What lies outside the client area counts kTitleTwipsHigh, not
    // kFrameTwipsHigh: the form never has a menu bar. For a form's constructor.
    void setTitleOnly() { frameHigh_ = kTitleTwipsHigh; }

    Control* ActiveControl() const; // with the focus, or null
    // The control of that name; null if the form isn't loaded or has none.
    QWidget* control(TextView name) const;
    QWidget& client() const; // what the controls lie on
    QMenuBar& menuBar();     // made at the first call
    QWidget* window() const; // null while not loaded

protected:
    virtual void buildControls() {}
    virtual void Form_Initialize() {} // once in the object's life, before its first Form_Load
    virtual void Form_Load() {}
    virtual void Form_Resize() {} // at the first showing and at each change of size
    virtual void Form_QueryUnload(UnloadMode) {}
    virtual void Form_Unload() {} // may be entered again by an Unload inside

private:
    friend class FormWindow;
    void buildWindow();
    void present();
    void unload(UnloadMode mode);
    void destroyWindow();
    void setSize(float& side, float& asSet, float twips);
    void applySize();
    void applyPosition();
    void windowResized(const QSize& client);
    void windowMoved(const QPoint& corner);
    void fireResize();
    bool keyPressed(int key);
    QSize clientPixels() const;
    FormWindow& built() const;

    Text name_;
    Text caption_;
    BorderStyle border_;
    bool controlBox_ = true;
    int frameHigh_ = kFrameTwipsHigh;
    bool initialised_ = false;
    bool shown_ = false;
    bool placed_ = false;
    Colour backColor_ = kButtonFace;
    float left_ = 0, top_ = 0, width_ = 4800, height_ = 3600;
    // As code set them last: pixels that agree with these are no change.
    float leftAsSet_ = 0, topAsSet_ = 0, widthAsSet_ = 4800, heightAsSet_ = 3600;
    WindowStates state_ = WindowStates::Normal; // to be taken when it is shown
    QPointer<QWidget> window_;
    QPointer<CommandButton> defaultButton_;
    QPointer<CommandButton> cancelButton_;
    QEventLoop* modalLoop_ = nullptr;
};

// The loaded forms, in the order of their loading.
class Forms {
public:
    static int Count();
    static Form& item(int index); // outside: error 9
};

}
