VARYING vec2 edges;
VARYING vec4 color;
VARYING vec3 worldPosition;
void MAIN() {
    edges = UV0;
    color = COLOR;
    worldPosition = (MODEL_MATRIX * vec4(VERTEX, 1.0)).xyz;
}
