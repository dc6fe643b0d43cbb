VARYING vec4 color;
const float thinnest = 0.6;  // pixels
void MAIN() {
    color = COLOR;
    vec4 middle = MODELVIEWPROJECTION_MATRIX * vec4(VERTEX, 1.0);
    vec4 side = MODELVIEWPROJECTION_MATRIX * vec4(VERTEX + NORMAL, 1.0);
    POSITION = side;
    if (middle.w > 0.0 && side.w > 0.0) {
        vec2 aside = (side.xy / side.w - middle.xy / middle.w) * viewport * 0.5;
        float wide = length(aside);  // pixels that the ribbon really has
        if (wide < thinnest)
            POSITION = vec4(middle.xy + aside / max(wide, 1e-6) * thinnest / (viewport * 0.5) * middle.w, middle.zw);
    }
    if (front)
        POSITION.z = -POSITION.w * 0.999;
}
