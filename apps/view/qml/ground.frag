VARYING vec3 worldPosition;
// Lines every 10 and every 100 units show how large everything is; they vanish where there would be too many.
float grid(float size) {
    vec2 at = worldPosition.xz / size;
    vec2 pixel = fwidth(at);
    vec2 line = 1.0 - smoothstep(0.5 * pixel, 1.5 * pixel, abs(at - round(at)));
    line *= clamp((1.0 / pixel - 6.0) / 40.0, 0.0, 1.0);
    return max(line.x, line.y);
}
void MAIN() {
    BASE_COLOR = vec4(mix(vec3(0.30, 0.37, 0.23), vec3(0.23, 0.29, 0.17), max(grid(10.0), grid(100.0))), 1.0);
    ROUGHNESS = 1.0;
    SPECULAR_AMOUNT = 0.0;
}
void POST_PROCESS() {
    float share = distance(worldPosition, CAMERA_POSITION) / haze;
    COLOR_SUM = vec4(mix(vec3(0.81, 0.865, 0.9), DIFFUSE.rgb, 1.0 / (1.0 + share * share)), 1.0);
}
