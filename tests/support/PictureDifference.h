#pragma once

class QImage;

/// The part of two pictures that a person sees as different, 0 to 1: a pixel differs when its distance in CIE
/// Lab is above 10, about four times what can just be seen. Pictures of different sizes differ wholly. Pass
/// pictures at half size or less, which forgives the edges of letters.
double PictureDifference(const QImage &a, const QImage &b);
