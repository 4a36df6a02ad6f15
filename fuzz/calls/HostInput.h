// The host's frame and its input: the steps of drawing, keys, the mouse and the camera, each held against who
// is to be called.
#pragma once

namespace calls {

void Draw();
void Key();
void Mouse();
void Cursor();
void Wheel();
void Camera();

}  // namespace calls
