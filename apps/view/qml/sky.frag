VARYING vec3 direction;
void MAIN() {
    float height = clamp(normalize(direction).y * 1.4, 0.0, 1.0);
    FRAGCOLOR = vec4(mix(vec3(0.90, 0.93, 0.95), vec3(0.42, 0.60, 0.80), sqrt(height)), 1.0);
}
