#pragma once

#include <QQuickWindow>
#include <QSGTexture>

#include <algorithm>
#include <memory>
#include <vector>

namespace tessary::look {

/// The texture of a picture, which all in that window that look the same have in common for as long as one of
/// them holds it. Only while a scene is brought up to date: no two threads do that at a time.
/// @param look all that the picture depends on
/// @param draw makes the picture, when nobody holds it
template <typename Look, typename Draw>
std::shared_ptr<QSGTexture> sharedTexture(QQuickWindow& window, const Look& look, const Draw& draw)
{
    struct Held
    {
        QQuickWindow* window;
        Look look;
        std::weak_ptr<QSGTexture> texture;
    };

    static std::vector<Held> all;
    std::erase_if(all, [](const Held& held) { return held.texture.expired(); });
    const auto found = std::find_if(all.begin(), all.end(), [&](const Held& held) {
        return held.window == &window && held.look == look;
    });
    if (found != all.end()) {
        return found->texture.lock();
    }
    // Not in the toolkit's one large texture for many pictures: most of that would be empty.
    std::shared_ptr<QSGTexture> texture(window.createTextureFromImage(draw()));
    all.push_back({&window, look, texture});
    return texture;
}

} // namespace tessary::look
