VARYING vec2 edges;
VARYING vec4 color;
VARYING vec3 worldPosition;
// Edges are lines about a pixel wide, which vanish where there would be too many of them.
void MAIN() {
    vec2 pixel = fwidth(edges);
    vec2 line = 1.0 - smoothstep(0.25 * pixel, 1.0 * pixel, edges);
    line *= clamp((1.0 / pixel - 4.0) / 12.0, 0.0, 1.0);
    BASE_COLOR = vec4(color.rgb * (1.0 - 0.4 * max(line.x, line.y)), color.a);
    ROUGHNESS = 1.0;
    SPECULAR_AMOUNT = 0.0;
}
void POST_PROCESS() {
    float share = distance(worldPosition, CAMERA_POSITION) / haze;
    vec3 hazy = mix(vec3(0.81, 0.865, 0.9), DIFFUSE.rgb + SPECULAR, 1.0 / (1.0 + share * share));
    // Premultiplied by alpha. This colour is linear and will be converted to sRGB, where a factor of alpha^2.2
    // becomes one of alpha.
    COLOR_SUM = vec4(hazy * pow(color.a, 2.2), color.a);
}
