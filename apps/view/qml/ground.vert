VARYING vec3 worldPosition;
void MAIN() {
    worldPosition = (MODEL_MATRIX * vec4(VERTEX, 1.0)).xyz;
}
