VARYING vec4 color;
VARYING float wide;
void MAIN() {
    float share = strength * (vanishes ? clamp(2.0 * (1.5 - wide / thinnest), 0.0, 1.0) : 1.0);
    FRAGCOLOR = vec4(color.rgb * share, share);
}
