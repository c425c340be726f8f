#pragma once

#include "lifetime.h"
#include "linux/event_loop/paced_work.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/tray_icon_facts.h"
#include "linux/x11/tray_slot.h"
#include "scoped_timer.h"

#include <xcb/composite.h>
#include <xcb/damage.h>

#include <functional>
#include <optional>
#include <string>

namespace velmo::x11 {

/// Another program's icon window, embedded in a window of the bar.
class TrayIcon : public BarItem {
public:
    TrayIcon(MenuBar& bar, const TrayIconFacts& facts, const std::string& identity);
    ~TrayIcon() override;

    xcb_window_t client() const { return facts_.client; }
    /// Called once the program has taken its window away.
    void setOnEnd(std::function<void()> handler) { onEnd_ = std::move(handler); }
    /// Called when the program says something new of its icon, and not again before that is asked for.
    void setOnNews(std::function<void(TrayIconNews::Kind)> handler) { onNews_ = std::move(handler); }
    TrayIconNews askForNews(TrayIconNews::Kind kind);
    /// The answers are taken here.
    void takeNews(const TrayIconNews& news);

    bool isOurs() const override { return false; }
    bool isShown() const override { return facts_.wantsToBeShown && !ended_; }
    bool hasEnded() const override { return ended_; }
    int preferredWidth() const override { return traySlotWidth(bar_.appearance(), spacing_); }
    int leastWidth() const override { return leastTraySlotWidth(bar_.appearance(), spacing_); }
    void appearanceChanged() override;
    std::optional<Content> content() const override;
    WindowListEntry describe() const override;
    void willMove(const PixelRect& next) override;

protected:
    void resized() override;
    void moved() override;

private:
    void embed();
    /// The client lies, or has lain, in a window that is not ours.
    void clientWentInto(xcb_window_t parent);
    void followClient();
    /// After a time in which nobody has told where it goes.
    void findClient();
    /// Of that window, which has the client, or has had it; then the client comes, stays or leaves.
    void findOwner(xcb_window_t parent);
    void lookForOwner(xcb_window_t parent, int looksLeft);
    /// None where the client is gone.
    xcb_window_t parentOfClient() const;
    /// As far as we have been told. What lies in a window of others is theirs to place.
    bool isHere() const {
        return !ended_ && !isClaimed_ && !lookForOwner_.isValid() && !following_.isPending();
    }
    bool isInItsPlace() const { return parentOfClient() == window(); }
    /// Does what was left undone while it was not known whether the client is here.
    void settleOrLeave();
    /// From the window manager, which has taken the client.
    void claim();
    void handle(const xcb_generic_event_t& event);
    void handleChange(const xcb_generic_event_t& event);
    void handleRequest(const xcb_generic_event_t& event);
    /// False where the client has to be left alone for a while.
    bool isBearable();
    void listen(bool listening) const;
    void listenAgain();
    void noticeNews(TrayIconNews::Kind kind);
    bool& isKnown(TrayIconNews::Kind kind) {
        return kind == TrayIconNews::Kind::embedding ? news_.ofEmbedding : news_.ofTitle;
    }
    void showOrHide();
    /// Returns the number of the request.
    unsigned placeClient() const;
    void tellSize();
    void mapClient();
    void damaged();
    unsigned subtractDamage() const;
    /// True where what that request has done is painted already.
    bool isOfStep(unsigned request) const;
    void paint();
    /// What is seen of the icon there.
    Pixmap look(const PixelRect& place);
    void unredirect() const;
    void release() const;
    void leave();
    void end();
    /// What the client draws, we draw ourselves, or the server does; it is kept wherever the icon lies.
    std::uint8_t redirection() const {
        return composited_ ? XCB_COMPOSITE_REDIRECT_MANUAL : XCB_COMPOSITE_REDIRECT_AUTOMATIC;
    }
    PixelRect clientArea() const {
        return trayIconArea(bar_.appearance(), place() ? place()->width : preferredWidth());
    }

    MenuBar& bar_;
    ItemSpacing spacing_;
    TrayIconFacts facts_;
    bool ended_ = false;
    /// We draw the icon's content over the bar's background ourselves, since its window has a visual of
    /// another kind, which the server cannot blend.
    bool composited_;
    xcb_damage_damage_t damage_ = 0;
    /// The window manager has taken the client for an ordinary window, and is to let it go.
    bool isClaimed_ = false;
    int claims_ = 0;
    bool hasBeenEmbedded_ = false;
    /// While it is not known yet whether a window manager has the client.
    ScopedTimer lookForOwner_;
    /// Where the client has gone of late: into a window that is neither ours nor the root window, and then
    /// perhaps into that one.
    std::optional<xcb_window_t> holder_;
    bool wentToRoot_ = false;
    /// The content has changed since it was painted last.
    bool unpainted_ = false;
    /// It is about to come into the bar.
    bool isAbsent_ = true;
    /// For the place that the icon is about to have.
    std::optional<Pixmap> nextLook_;
    /// The request that has moved the client in its window, until the step is over.
    std::optional<unsigned> resizing_;
    /// From that one on, of the last step for which it had been painted before. Requests have numbers from 1.
    struct Requests {
        unsigned begin = 0;
        unsigned end = 0;
    } paintedRequests_;
    /// Of the client, as far as we have been told: another size comes with another content.
    PixelRect toldArea_;
    /// Events that the client has caused in the present second.
    int eventCount_ = 0;
    Date countedSince_ = 0;
    PacedWork painting_;
    PacedWork sizeCorrection_;
    PacedWork mapping_;
    PacedWork following_;
    struct News {
        bool ofEmbedding = false;
        bool ofTitle = false;
    } news_;
    std::function<void(TrayIconNews::Kind)> onNews_;
    std::function<void()> onEnd_;
    Registration events_;
    Registration requests_;
    Registration damageEvents_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
